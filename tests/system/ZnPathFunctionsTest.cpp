// The file operations among the free path functions; the splitting ones are
// in the path table test.
#include <znutil/system/ZnPathFunctions.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "ScratchDirectory.h"

namespace {

namespace fs = std::filesystem;
using namespace znutil_test;

// Sets an environment variable for the life of the object.
class ScopedVariable {
 public:
  ScopedVariable(char const *name, std::string const &value) : name_(name) {
    char const *old = std::getenv(name);
    hadValue_ = old != nullptr;
    if (hadValue_) old_ = old;
    setenv(name, value.c_str(), 1);
  }
  ~ScopedVariable() {
    if (hadValue_)
      setenv(name_, old_.c_str(), 1);
    else
      unsetenv(name_);
  }

 private:
  char const *name_;
  bool hadValue_;
  std::string old_;
};

TEST(ZnPathFunctionsTest, CopyFileCopiesBytesAndModeAndReplaces) {
  ScratchDirectory scratch;
  std::string const source = WriteFile(scratch / "tool.sh", std::string("#!/bin/sh\0binary", 16));
  fs::permissions(source, fs::perms::owner_all | fs::perms::group_read);
  WriteFile(scratch / "copy.sh", "an older and longer text");
  ASSERT_TRUE(ZnCopyFile(LibraryPath(source), LibraryPath(scratch / "copy.sh")));
  EXPECT_EQ(ReadFile(scratch / "copy.sh"), std::string("#!/bin/sh\0binary", 16));
  EXPECT_EQ(fs::status(scratch / "copy.sh").permissions(), fs::perms::owner_all | fs::perms::group_read);
}

TEST(ZnPathFunctionsTest, CopyFileRefusesFoldersMissingFilesAndItself) {
  ScratchDirectory scratch;
  std::string const source = WriteFile(scratch / "keep.txt", "kept");
  fs::create_directory(scratch / "folder");
  EXPECT_FALSE(ZnCopyFile(LibraryPath(scratch / "missing"), LibraryPath(scratch / "out")));
  EXPECT_FALSE(fs::exists(scratch / "out"));
  EXPECT_FALSE(ZnCopyFile(LibraryPath(scratch / "folder"), LibraryPath(scratch / "out")));
  EXPECT_FALSE(ZnCopyFile(LibraryPath(source), LibraryPath(scratch / "folder")));
  EXPECT_FALSE(ZnCopyFile(LibraryPath(source), LibraryPath(source)));
  EXPECT_FALSE(ZnCopyFile(LibraryPath(source), LibraryPath(scratch / "folder/../keep.txt")));
  EXPECT_EQ(ReadFile(source), "kept");
}

TEST(ZnPathFunctionsTest, DoesFileExistOnlyForReadableFiles) {
  ScratchDirectory scratch;
  std::string const file = WriteFile(scratch / "here.txt");
  EXPECT_TRUE(ZnDoesFileExist(LibraryPath(file)));
  EXPECT_TRUE(ZnDoesFileExist(ZnString(file.c_str())));
  EXPECT_FALSE(ZnDoesFileExist(LibraryPath(scratch.Path())));
  EXPECT_FALSE(ZnDoesFileExist(LibraryPath(scratch / "gone.txt")));
  EXPECT_FALSE(ZnDoesFileExist(""));
}

TEST(ZnPathFunctionsTest, SystemDirectoryIsMadeFromTheEnvironment) {
  ScratchDirectory scratch;
  {
    ScopedVariable system("ZNUTIL_SYSTEM_DIR", scratch / "system/dir");
    EXPECT_EQ(Text(ZnGetSystemDirectory()), Backslashed(scratch / "system/dir"));
    EXPECT_TRUE(fs::is_directory(scratch / "system/dir"));
  }
  {
    ScopedVariable system("ZNUTIL_SYSTEM_DIR", "");
    ScopedVariable config("XDG_CONFIG_HOME", scratch / "xdg");
    EXPECT_EQ(Text(ZnGetSystemDirectory()), Backslashed(scratch / "xdg"));
  }
  {
    ScopedVariable system("ZNUTIL_SYSTEM_DIR", "");
    ScopedVariable config("XDG_CONFIG_HOME", "");
    ScopedVariable home("HOME", scratch / "home");
    EXPECT_EQ(Text(ZnGetSystemDirectory()), Backslashed(scratch / "home/.config"));
    EXPECT_TRUE(fs::is_directory(scratch / "home/.config"));
  }
  {
    // Longer than the 260-character buffer of the original call.
    ScopedVariable system("ZNUTIL_SYSTEM_DIR", scratch / (std::string(200, 'x') + "/" + std::string(80, 'y')));
    EXPECT_EQ(Text(ZnGetSystemDirectory()), "");
  }
}

}  // namespace
