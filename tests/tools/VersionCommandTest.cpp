// Runs the znutil tool as a user would, on copies of the sample image.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/wait.h>

#include <gtest/gtest.h>

#include "../system/ScratchDirectory.h"

namespace {

namespace fs = std::filesystem;
using znutil_test::ReadFile;

std::uint32_t DwordAt(std::string const &bytes, std::size_t offset) {
  std::uint32_t value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

// Offset of the fixed version information, found by its signature.
std::size_t FixedInfo(std::string const &bytes) {
  for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4)
    if (DwordAt(bytes, at) == 0xFEEF04BD) return at;
  return std::string::npos;
}

struct Result {
  int status;
  std::string out, err;
};

// A scratch folder holding a copy of the sample image.
class VersionCommandTest : public ::testing::Test {
 protected:
  VersionCommandTest() { fs::copy_file(ZNUTIL_SAMPLE_IMAGE, sample); }

  // Runs the tool in the test's folder with `arguments` (shell words).
  Result Run(std::string const &arguments) {
    std::string const command = "cd '" + folder.Path() + "' && '" ZNUTIL_TOOL "' " + arguments + " >out.txt 2>err.txt";
    int const raw = std::system(command.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadFile(folder / "out.txt"), ReadFile(folder / "err.txt")};
  }

  znutil_test::ScratchDirectory folder;
  std::string const sample = folder / "sample.exe";
};

char const kSampleOutput[] =
    "File version:     2.13.0.7\n"
    "Product version:  2.13.0.0\n"
    "CompanyName:      ZNUTIL project\n"
    "FileDescription:  Sample image for the znutil tests\n"
    "FileVersion:      2.13.0.7\n"
    "InternalName:     sample\n"
    "LegalCopyright:   Public domain\n"
    "OriginalFilename: sample.exe\n"
    "ProductName:      ZNUTIL\n"
    "ProductVersion:   2.13\n";

TEST_F(VersionCommandTest, PrintsTheVersionsAndStrings) {
  Result const result = Run("version sample.exe");
  EXPECT_EQ(0, result.status);
  EXPECT_EQ(kSampleOutput, result.out);
  EXPECT_EQ("", result.err);
  EXPECT_EQ(ReadFile(ZNUTIL_SAMPLE_IMAGE), ReadFile(sample));
  EXPECT_EQ(kSampleOutput, Run("version --language 0x409 sample.exe").out);
}

TEST_F(VersionCommandTest, StampsVersionsInPlace) {
  Result const result = Run("version --set-file-version 3.1.4.1 --set-product-version=3.1 sample.exe");
  EXPECT_EQ(0, result.status);
  EXPECT_EQ(0u, result.out.find("File version:     3.1.4.1\nProduct version:  3.1.0.0\n"));
  std::string const bytes = ReadFile(sample);
  std::size_t const fixed = FixedInfo(bytes);
  ASSERT_NE(std::string::npos, fixed);
  EXPECT_EQ(0x00030001u, DwordAt(bytes, fixed + 8));
  EXPECT_EQ(0x00040001u, DwordAt(bytes, fixed + 12));
  EXPECT_EQ(0x00030001u, DwordAt(bytes, fixed + 16));
  EXPECT_EQ(0u, DwordAt(bytes, fixed + 20));
  EXPECT_EQ(0u, Run("version sample.exe").out.find("File version:     3.1.4.1\n"));
  // The string table is left as it was.
  EXPECT_NE(std::string::npos, Run("version sample.exe").out.find("FileVersion:      2.13.0.7\n"));
}

TEST_F(VersionCommandTest, HelpOnEveryLevel) {
  for (char const *arguments : {"--help", "-h"}) {
    Result const result = Run(arguments);
    EXPECT_EQ(0, result.status) << arguments;
    EXPECT_NE(std::string::npos, result.out.find("  version ")) << arguments;
  }
  for (char const *arguments : {"version --help", "version sample.exe --help", "version --help missing.exe"}) {
    Result const result = Run(arguments);
    EXPECT_EQ(0, result.status) << arguments;
    EXPECT_EQ(0u, result.out.find("Usage: znutil version")) << arguments;
    EXPECT_NE(std::string::npos, result.out.find("--set-file-version")) << arguments;
  }
}

TEST_F(VersionCommandTest, BadInputFailsWithOneLineAndLeavesTheFileAlone) {
  znutil_test::WriteFile(folder / "notes.txt", "just text\n");
  znutil_test::WriteFile(folder / "empty.exe", "");
  fs::create_directories(folder / "bin");
  struct Case {
    char const *arguments;
    char const *message;
  };
  Case const cases[] = {
      {"bogus", "znutil: unknown command 'bogus'"},
      {"version", "znutil version: missing FILE"},
      {"version --frob sample.exe", "znutil version: unknown option '--frob'"},
      {"version --set-file-version 1.x sample.exe", "znutil version: bad file version '1.x'"},
      {"version --set-file-version 1.2.3.4.5 sample.exe", "znutil version: bad file version '1.2.3.4.5'"},
      {"version --set-product-version 65536 sample.exe", "znutil version: bad product version '65536'"},
      {"version --set-file-version=1..2 sample.exe", "znutil version: bad file version '1..2'"},
      {"version sample.exe --set-file-version", "znutil version: bad file version ''"},
      {"version --language english sample.exe", "znutil version: bad language 'english'"},
      {"version sample.exe sample.exe", "znutil version: more than one FILE given"},
      {"version missing.exe", "znutil version: no such file 'missing.exe'"},
      {"version bin", "znutil version: 'bin' is a folder"},
      {"version empty.exe", "znutil version: 'empty.exe' is empty"},
      {"version notes.txt", "znutil version: 'notes.txt' is not a 32-bit Windows executable"},
      {"version --language 7 sample.exe", "znutil version: 'sample.exe' has no version resource in language 7"},
  };

  for (Case const &c : cases) {
    Result const result = Run(c.arguments);
    EXPECT_EQ(2, result.status) << c.arguments;
    EXPECT_EQ(0u, result.err.find(c.message)) << c.arguments << ": " << result.err;
    EXPECT_EQ(1, std::count(result.err.begin(), result.err.end(), '\n')) << c.arguments;
    EXPECT_EQ("", result.out) << c.arguments;
  }
  EXPECT_EQ(ReadFile(ZNUTIL_SAMPLE_IMAGE), ReadFile(sample));
}

}  // namespace
