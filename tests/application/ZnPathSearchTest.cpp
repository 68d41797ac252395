// ZnPathSearch over folders of a scratch directory.
#include <znutil/application/ZnPathSearch.h>

#include <filesystem>
#include <string>

#include <unistd.h>

#include <gtest/gtest.h>

#include "../system/ScratchDirectory.h"

namespace {

namespace fs = std::filesystem;
using namespace znutil_test;

class ZnPathSearchTest : public ::testing::Test {
 protected:
  ZnPathSearchTest() {
    for (char const *folder : {"a", "b", "c"}) fs::create_directory(scratch / folder);
    WriteFile(scratch / "b/tool.cfg");
    WriteFile(scratch / "c/tool.cfg");
  }
  // The scratch folders in the library's form, joined with ";".
  std::string List(std::string const &folders) const {
    std::string list;
    for (char folder : folders) list += (list.empty() ? "" : ";") + Backslashed(scratch / std::string(1, folder));
    return list;
  }
  std::string In(char const *relative) const { return Backslashed(scratch / relative); }

  ScratchDirectory scratch;
};

// A file as it stands comes first; along the list the first directory wins.
TEST_F(ZnPathSearchTest, FileAsItStandsThenTheFirstDirectoryOfTheList) {
  ZnPathSearch search(In("c/tool.cfg").c_str(), List("b").c_str());
  EXPECT_EQ(Text(search.Search()), In("c/tool.cfg"));
  // The folder part of the name is dropped along the list.
  search = ZnPathSearch("no\\such\\folder\\tool.cfg", (List("acb") + ";").c_str());
  EXPECT_EQ(Text(search.Search()), In("c/tool.cfg"));
  ZnPathSearch copy(search);
  search.NewSearch("elsewhere\\tool.cfg", NULL_STRING);  // keeps the list
  EXPECT_EQ(Text(search.Search()), In("c/tool.cfg"));
  search.NewSearch("missing.cfg", NULL_STRING);
  EXPECT_EQ(Text(search.Search()), "");
  search.NewSearch("tool.cfg", (";;" + List("b")).c_str());  // empty items name no folder
  EXPECT_EQ(Text(search.Search()), In("b/tool.cfg"));
  EXPECT_EQ(Text(copy.Search()), In("c/tool.cfg"));
  copy = search;
  EXPECT_EQ(Text(copy.Search()), In("b/tool.cfg"));
}

TEST_F(ZnPathSearchTest, UnreadableFileCountsAsMissing) {
  fs::create_directory(scratch / "a/tool.cfg");  // a folder by the file's name
  ZnPathSearch search("tool.cfg", List("ac").c_str());
  EXPECT_EQ(Text(search.Search()), In("c/tool.cfg"));
  EXPECT_FALSE(ZnPathSearch::TestAccess(In("a/tool.cfg").c_str()));
  if (geteuid() == 0) GTEST_SKIP() << "root reads a file without read rights";
  fs::permissions(scratch / "b/tool.cfg", fs::perms::none);
  search.NewSearch("tool.cfg", List("bc").c_str());
  EXPECT_EQ(Text(search.Search()), In("c/tool.cfg"));
}

}  // namespace
