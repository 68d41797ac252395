// The application identity of this test program itself.
#include <znutil/application/UtilityApp.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <znutil/system/ZnDirectory.h>

#include <gtest/gtest.h>

#include "../system/ScratchDirectory.h"

// Runs the start-up steps that the library's start runs.
class UtilityAppTestAccess {
 public:
  static void InitAppName() { UtilityApp::InitAppName(); }
  static void InitStartupDirectory() { UtilityApp::InitStartupDirectory(); }
  static unsigned long MemoryUsage() { return UtilityApp::udwMemoryUsage; }
};

namespace {

using znutil_test::Backslashed;
using znutil_test::Text;

// The file mapped at exactly `address` in this process, or empty.
std::string FileMappedAt(void const *address) {
  std::ifstream maps("/proc/self/maps");
  std::ostringstream start;
  start << std::hex << reinterpret_cast<std::uintptr_t>(address) << '-';
  for (std::string line; std::getline(maps, line);) {
    if (line.rfind(start.str(), 0) == 0) return line.substr(line.find('/'));
  }
  return std::string();
}

TEST(UtilityAppTest, IdentityIsEmptyUntilStartThenNamesThisProgram) {
  EXPECT_EQ(Text(UtilityApp::AppName()), "");
  EXPECT_EQ(Text(UtilityApp::StartupDir()), "");

  UtilityAppTestAccess::InitAppName();
  EXPECT_EQ(Text(UtilityApp::AppName()), "application_test");
  EXPECT_EQ(Text(UtilityApp::StartupDir()), "");  // each step fills its own value

  UtilityAppTestAccess::InitStartupDirectory();
  std::string const built = std::filesystem::canonical(ZNUTIL_TEST_BINARY_DIR).string();
  EXPECT_EQ(Text(UtilityApp::StartupDir()), Backslashed(built));
  // The values are stored, not computed on each call.
  EXPECT_EQ(&UtilityApp::AppName(), &UtilityApp::AppName());

  // Relative paths are taken from the start-up directory.
  EXPECT_EQ(Text(ZnDirectory::CreateRelativePath("x", "y")), "..\\y");
  EXPECT_EQ(Text(ZnDirectory::CreateRelativePath("", (built + "/Sub").c_str())), ".\\sub");
}

TEST(UtilityAppTest, LibInstanceIsWhereTheLibraryIsLoaded) {
  void const *instance = UtilityApp::LibInstance();
  ASSERT_NE(instance, nullptr);
  EXPECT_EQ(std::memcmp(instance, "\177ELF", 4), 0);
  EXPECT_NE(FileMappedAt(instance).find("libznutil"), std::string::npos) << FileMappedAt(instance);
}

TEST(UtilityAppTest, MemoryUsageIsAnExportedStubThatStaysZero) {
  EXPECT_EQ(UtilityAppTestAccess::MemoryUsage(), 0ul);  // linked from the library, so exported
}

}  // namespace
