#include <znutil/text/ZnString.h>

#include <algorithm>
#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

#include <znutil/platform/StringTable.h>

namespace {

std::string Text(ZnString const &text) { return static_cast<char const *>(text); }

TEST(ZnStringPathTest, JoinLeavesExactlyOneBackslash) {
  struct Case {
    char const *left, *right, *joined;
  } const cases[] = {
      {"a", "b", "a\\b"},         {"a\\\\", "\\b", "a\\b"}, {"a\\", "b", "a\\b"},  {"", "a", "\\a"},
      {"a", "\\\\\\b", "a\\b"},   {"a/", "b", "a/\\b"},     {"a", "", "a\\"},      {"\\", "x", "\\x"},
  };
  for (auto const &c : cases) EXPECT_EQ(ZnString(c.left) ^ ZnString(c.right), c.joined) << c.left << " ^ " << c.right;
  ZnString left("dir");
  EXPECT_EQ(left ^ left, "dir\\dir");
  EXPECT_EQ(left, "dir");
  EXPECT_EQ(ZnString() ^ ZnString(), "\\");
}

TEST(ZnStringPathTest, SplitPathFollowsWindowsRules) {
  struct Case {
    char const *path, *drive, *dir, *name, *ext;
  } const cases[] = {
      {"C:\\dir\\sub\\file.tar.gz", "C:", "\\dir\\sub\\", "file.tar", ".gz"},
      {"dir/file", "", "dir/", "file", ""},
      {"file.", "", "", "file", "."},
      {".profile", "", "", "", ".profile"},
      {"a.b\\c", "", "a.b\\", "c", ""},
      {"D:name.txt", "D:", "", "name", ".txt"},
      {"", "", "", "", ""},
  };
  for (auto const &c : cases) {
    ZnString drive("x"), dir("x"), name("x"), ext("x");
    ZnString(c.path).SplitPath(&drive, &dir, &name, &ext);
    EXPECT_EQ(Text(drive) + "|" + Text(dir) + "|" + Text(name) + "|" + Text(ext),
              std::string(c.drive) + "|" + c.dir + "|" + c.name + "|" + c.ext) << c.path;
  }
  ZnString name, ext;
  ZnString(("dir\\" + std::string(400, 'n') + ".e").c_str()).SplitPath(nullptr, nullptr, &name, &ext);
  EXPECT_EQ(name.Length(), 255) << "each piece is cut to its buffer";
  EXPECT_EQ(ext, ".e");
}

TEST(ZnStringPathTest, MakePathAddsMissingSeparators) {
  struct Case {
    char const *drive, *dir, *name, *ext, *path;
  } const cases[] = {
      {"C", "dir", "file", "txt", "C:dir\\file.txt"},
      {"C:", "dir\\", "file", ".txt", "C:dir\\file.txt"},
      {"", "a/b/", "c", "", "a/b/c"},
      {"", "", "name", "", "name"},
  };
  for (auto const &c : cases) {
    ZnString path("old");
    path.MakePath(ZnString(c.drive), ZnString(c.dir), ZnString(c.name), ZnString(c.ext));
    EXPECT_EQ(path, c.path);
  }
  ZnString path;
  path.MakePath(ZnString(), ZnString(std::string(300, 'd').c_str()), ZnString("x"), ZnString());
  EXPECT_EQ(path.Length(), 259) << "cut to the 260-character buffer";
}

TEST(ZnStringPathTest, ConvertToPathFoldsRelativeParts) {
  char cwd[4096];
  ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
  std::string expected(cwd);
  std::replace(expected.begin(), expected.end(), '/', '\\');
  EXPECT_EQ(ZnString("sub/../file.txt").ToPath(), (expected + "\\file.txt").c_str());
  EXPECT_EQ(ZnString("\\a\\.\\b\\..\\c").ToPath(), "\\a\\c");
  EXPECT_EQ(ZnString("/a/../../b").ToPath(), "\\b");
  ZnString drive("C:\\x\\y\\..");
  drive.ConvertToPath();
  EXPECT_EQ(drive, "C:\\x");
}

TEST(ZnStringPathTest, LoadStringReadsRegisteredTables) {
  int instanceTag = 0;
  void *instance = &instanceTag;
  znutil::platform::RegisterStringResource(instance, 7, "Ready");
  ZnString text("old");
  EXPECT_TRUE(text.LoadStringA(instance, 7));
  EXPECT_EQ(text, "Ready");
  EXPECT_FALSE(text.LoadStringA(instance, 8));
  EXPECT_TRUE(text == NULL_STRING);
  znutil::platform::RegisterStringResource(instance, 7, nullptr);
  EXPECT_FALSE(text.LoadStringA(instance, 7));
}

}  // namespace
