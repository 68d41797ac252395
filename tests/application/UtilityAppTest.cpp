// The application identity of this test program itself.
#include <znutil/application/UtilityApp.h>

#include <cstring>
#include <filesystem>
#include <string>

#include <dlfcn.h>

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

using znutil_test::Text;

TEST(UtilityAppTest, IdentityIsEmptyUntilStartThenNamesThisProgram) {
  EXPECT_EQ(Text(UtilityApp::AppName()), "");
  EXPECT_EQ(Text(UtilityApp::StartupDir()), "");

  UtilityAppTestAccess::InitAppName();
  EXPECT_EQ(Text(UtilityApp::AppName()), "application_test");
  EXPECT_EQ(Text(UtilityApp::StartupDir()), "");  // each step fills its own value

  UtilityAppTestAccess::InitStartupDirectory();
  std::string const built = std::filesystem::canonical(ZNUTIL_TEST_BINARY_DIR).string();
  EXPECT_EQ(Text(UtilityApp::StartupDir()), znutil_test::Backslashed(built));
  // The values are stored, not computed on each call.
  EXPECT_EQ(&UtilityApp::AppName(), &UtilityApp::AppName());

  // Relative paths are taken from the start-up directory.
  EXPECT_EQ(Text(ZnDirectory::CreateRelativePath("x", "y")), "..\\y");
  EXPECT_EQ(Text(ZnDirectory::CreateRelativePath("", (built + "/Sub").c_str())), ".\\sub");
}

// The instance is where the library is loaded; the memory usage is an
// exported stub (linked from the library) that stays zero.
TEST(UtilityAppTest, LibInstanceIsWhereTheLibraryIsLoadedAndMemoryUsageIsZero) {
  void *instance = UtilityApp::LibInstance();
  Dl_info module{};
  ASSERT_NE(dladdr(instance, &module), 0);
  EXPECT_EQ(module.dli_fbase, instance);
  EXPECT_EQ(std::memcmp(instance, "\177ELF", 4), 0);
  EXPECT_NE(std::string(module.dli_fname).find("libznutil"), std::string::npos) << module.dli_fname;
  EXPECT_EQ(UtilityAppTestAccess::MemoryUsage(), 0ul);
}

}  // namespace
