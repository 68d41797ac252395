// Where the library looks for plug-ins: the order of the sources, the bad
// words of PLUGINS_ORDER, and the corners that must not recurse or fault.
#include <atomic>
#include <string>
#include <vector>

#include <znutil/logging/ZnLogger.h>
#include <znutil/system/ZnDirectory.h>
#include <znutil/text/ZnStringList.h>

#include "LibraryFixture.h"

namespace znutil_test {
namespace {

std::vector<std::string> PluginPath() {
  ZnStringList list;
  std::vector<std::string> items;
  bool const found = UtilityApp::PluginPath(&list);
  ZnListContext context;
  for (ZnString *item = list.First(context); item != nullptr; item = list.Next(context)) items.push_back(Text(*item));
  EXPECT_EQ(found, !items.empty());
  return items;
}

using Items = std::vector<std::string>;

TEST_F(LibraryTest, PluginSourcesComeInTheirOrderAndBadWordsAreLoggedOnceEach) {
  Start(false);
  std::string const dir = Text(UtilityApp::StartupDir()) + "\\PLUGINS";
  EXPECT_EQ(PluginPath(), Items{dir});  // neither variable nor setting: the folder
  app_.WriteGlobalString("PATHS", "PLUGINS", "\\global");
  EXPECT_EQ(PluginPath(), Items{"\\global"});
  app_.WriteProfileStringA("PATHS", "PLUGINS", "\\a;;\\b\\..\\c;");  // empty items go, each is parsed
  EXPECT_EQ(PluginPath(), (Items{"\\a", "\\c"}));
  setenv("PLUGINS", "\\env", 1);
  EXPECT_EQ(PluginPath(), Items{"\\env"});
  EXPECT_EQ(Text(UtilityApp::PluginDirectory()), "\\env");
  setenv("PLUGINS_ORDER", "REG,Env", 1);
  EXPECT_EQ(PluginPath(), (Items{"\\a", "\\c"}));
  setenv("PLUGINS_ORDER", "dir,env", 1);  // the folder is never empty: it stops the search
  EXPECT_EQ(PluginPath(), Items{dir});
  app_.WriteProfileStringA("PATHS", "PLUGINS_ORDER", "env");  // the environment wins over the profile
  EXPECT_EQ(PluginPath(), Items{dir});
  unsetenv("PLUGINS_ORDER");
  EXPECT_EQ(PluginPath(), Items{"\\env"});
  setenv("PLUGINS_ORDER", "disk,env,,x", 1);
  EXPECT_EQ(PluginPath(), Items{"\\env"});
  ShutdownUtilityLibrary();
  std::string const message =
      "\tPLUGINS_ORDER is not formatted correctly.\nThe value given was 'disk,env,,x'\n";
  std::string const log = ReadFile(LogFile());
  EXPECT_EQ(Count(log, message), 3) << log;  // disk, the empty word and x
  EXPECT_EQ(Count(log, "  Error  UtilityApp  Plugin Loader\n"), 3);
}

TEST_F(LibraryTest, UnsafeCornersOfThePluginPathAreSafe) {
  Start();
  // No valid word: no source, no directory.
  setenv("PLUGINS_ORDER", "none", 1);
  EXPECT_EQ(PluginPath(), Items{});
  EXPECT_EQ(Text(UtilityApp::PluginDirectory()), "");
  // Words after the fourth good one are ignored.
  setenv("PLUGINS", "\\env", 1);
  setenv("PLUGINS_ORDER", "reg,reg,reg,reg,env", 1);
  EXPECT_EQ(PluginPath(), Items{});
  // %PLUGINDIR% inside a plug-in path expands to nothing, once.
  setenv("PLUGINS_ORDER", "env", 1);
  setenv("PLUGINS", "%PLUGINDIR%\\x;\\y", 1);
  EXPECT_EQ(PluginPath(), (Items{"\\x", "\\y"}));
  EXPECT_EQ(Text(UtilityApp::ParsePath("%PLUGINDIR%\\z")), "\\x\\z");
  EXPECT_FALSE(UtilityApp::PluginPath(nullptr));
}

// Expansions on several threads at once give what one thread gets, and share
// no string count of the process-wide texts (the thread sanitizer checks).
TEST_F(LibraryTest, PathsExpandOnSeveralThreadsAtOnce) {
  Start();
  UtilityApp::SetPath("Shared", "\\shared");
  ZnString const path("\\%APPNAME%%startupdir%%Shared%%PLUGINDIR%");
  std::string const once = Text(UtilityApp::ParsePath(path));
  std::string const relative = Text(ZnDirectory::CreateRelativePath("a\\b", "c"));  // from the start-up folder
  std::atomic<int> wrong{0};
  Concurrently(4, [&] {
    for (int round = 0; round < 100; ++round) {
      wrong += Text(UtilityApp::ParsePath(path.Chars())) != once;
      wrong += Text(ZnDirectory::CreateRelativePath("a\\b", "c")) != relative;
    }
  });
  EXPECT_EQ(wrong.load(), 0);
  UtilityApp::SetPath("Shared", "");
}

// The override cannot be taken back, so it is tried in a child (which
// starts its own library: a forked child has none of its parent's threads).
TEST_F(LibraryTest, SetPluginDirectoryOverridesEverySource) {
  EXPECT_EXIT(
      {
        Start();
        setenv("PLUGINS", "\\env", 1);
        UtilityApp::SetPath("Data", "\\data");
        UtilityApp::SetPluginDirectory("%DATA%\\plugins;\\more");
        bool const right = (PluginPath() == Items{"\\data\\plugins", "\\more"});
        ShutdownUtilityLibrary();
        std::exit(right ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace znutil_test
