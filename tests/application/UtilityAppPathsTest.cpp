// Token expansion of UtilityApp::ParsePath and the named paths of SetPath.
#include <znutil/application/UtilityApp.h>
#include <znutil/application/ZnNamePathPair.h>
#include <znutil/application/internal/IdentityStart.h>
#include <znutil/containers/ZnTStringKeyOrderedList.h>

#include <string>

#include <gtest/gtest.h>

#include "../system/ScratchDirectory.h"
#include "../system/TestClocks.h"

namespace {

using znutil_test::ScopedVariable;
using znutil_test::Text;

std::string Parsed(char const *path) { return Text(UtilityApp::ParsePath(path)); }

TEST(UtilityAppPathsTest, ExpandsTokensAndFoldsRelativeParts) {
  struct {
    char const *path;
    char const *expected;
  } const cases[] = {
      {"C:\\a\\.\\b\\..\\c", "C:\\a\\c"},  // no mark: only the folding
      {"a/./b", "a\\.\\b"},                // a path that is not rooted is not folded
      {"%APPVERSION%", "Tesserae_2.13"},
      {"\\x\\%appVersion%\\..\\y", "\\x\\y"},  // folded after the expansion
      {"\\p%%q", "\\pq"},                       // an empty token gives nothing
      {"\\p%NoSuchName%q", "\\pq"},
      {"\\%a%%APPVERSION%%b%", "\\Tesserae_2.13"},
      {"%PLUGINDIR%\\x", "\\PLUGINS\\x"},  // the PLUGINS folder under a start-up folder not yet known
      // An unclosed mark cuts the rest and leaves the relative parts.
      {"a\\%STARTUPDIR", "a\\"},
      {"\\x\\..\\%APPVERSION%\\%y", "\\x\\..\\Tesserae_2.13\\"},
      {"100%", "100"},
  };
  for (auto const &c : cases) EXPECT_EQ(Parsed(c.path), c.expected) << c.path;
}

TEST(UtilityAppPathsTest, IdentityTokensNameTheRunningProgram) {
  znutil::detail::IdentityStart::Run();
  EXPECT_EQ(Parsed("%AppName%.cfg"), "paths_test.cfg");
  std::string const startup = Text(UtilityApp::StartupDir());
  std::string const parent = startup.substr(0, startup.rfind('\\'));
  EXPECT_EQ(Parsed("%startupdir%\\..\\data"), parent + "\\data");
}

// HOME comes from the environment, other names from SetPath; the built-in
// names win over SetPath.
TEST(UtilityAppPathsTest, HomeAndTheNamesOfSetPath) {
  ScopedVariable home("HOME", "/tmp/someone");
  ScopedVariable userName("USERNAME", "bob");
  ScopedVariable user("USER", "alice");
  UtilityApp::SetPath("Home", "\\mine");
  UtilityApp::SetPath("APPVERSION", "\\mine");
  EXPECT_EQ(Parsed("%Home%/.app"), "\\tmp\\someone\\.app");
  EXPECT_EQ(Parsed("%APPVERSION%"), "Tesserae_2.13");
  setenv("HOME", "", 1);  // empty counts as unset
  EXPECT_EQ(Parsed("%HOME%"), "\\home\\bob");
  setenv("USERNAME", "", 1);
  EXPECT_EQ(Parsed("%HOME%"), "\\home\\alice");

  UtilityApp::SetPath("Data", "C:\\data\\");
  EXPECT_EQ(Parsed("%DATA%\\x"), "C:\\data\\x");
  UtilityApp::SetPath("DATA", "\\other");  // the same name in another case
  EXPECT_EQ(Parsed("%data%"), "\\other");
  UtilityApp::SetPath("dAtA", "");
  EXPECT_EQ(Parsed("\\%DATA%x"), "\\x");
  UtilityApp::SetPath("", "\\never");  // ignored: %% stays empty
  EXPECT_EQ(Parsed("\\%%x"), "\\x");
}

TEST(ZnNamePathPairTest, ListsFindPairsByLowerCaseNameAndKeepTheirCase) {
  ZnTStringKeyOrderedList<ZnNamePathPair> pairs(true);
  ASSERT_TRUE(pairs.Add(new ZnNamePathPair("Data", "\\d")));
  ZnNamePathPair clash("DATA", "\\other");
  EXPECT_FALSE(pairs.Add(&clash));
  ASSERT_TRUE(pairs.Add(new ZnNamePathPair("bin", "\\b")));
  ZnListContext position;
  ZnNamePathPair *found = pairs.Find(ZnString("data"), position);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(Text(found->GetKey()), "Data");
  EXPECT_EQ(pairs.Find(&clash, position), found);
  EXPECT_TRUE(pairs.Delete(ZnString("data")));  // the owning list deletes the pair
  EXPECT_EQ(pairs.Find(ZnString("data"), position), nullptr);
}

}  // namespace
