// Test helpers for file system tests: a scratch folder that is removed with
// everything in it, small files, and paths in the library's `\` form.
#ifndef ZNUTIL_TESTS_SYSTEM_SCRATCHDIRECTORY_H
#define ZNUTIL_TESTS_SYSTEM_SCRATCHDIRECTORY_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <znutil/text/ZnString.h>

#include <gtest/gtest.h>

namespace znutil_test {

// A fresh folder under the test's temporary directory, removed with
// everything in it at the end of the test.
class ScratchDirectory {
 public:
  ScratchDirectory() {
    std::string pattern = testing::TempDir() + "znutil-test-XXXXXX";
    path_ = std::filesystem::canonical(mkdtemp(pattern.data())).string();
  }
  ~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchDirectory(ScratchDirectory const &) = delete;
  ScratchDirectory &operator=(ScratchDirectory const &) = delete;

  // The folder in the system's form, with `/`.
  std::string const &Path() const { return path_; }
  // A path inside the folder in the system's form.
  std::string operator/(std::string const &relative) const { return path_ + "/" + relative; }

 private:
  std::string path_;
};

// Writes `text` to a new file at `path` and returns the path.
inline std::string WriteFile(std::string const &path, std::string const &text = "some text") {
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

// The whole content of a file; empty if it cannot be read.
inline std::string ReadFile(std::string const &path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// A system path in the library's form: every `/` becomes `\`.
inline std::string Backslashed(std::string path) {
  for (char &c : path) {
    if (c == '/') c = '\\';
  }
  return path;
}

// A system path as a library path.
inline ZnString LibraryPath(std::string const &systemPath) { return ZnString(Backslashed(systemPath).c_str()); }

// The text of a string, for comparisons that print well.
inline std::string Text(ZnString const &value) { return value.Chars(); }

// How many descriptors the process holds open: a call that leaks one
// changes it.
inline long OpenDescriptors() {
  return static_cast<long>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                                         std::filesystem::directory_iterator()));
}

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_SYSTEM_SCRATCHDIRECTORY_H
