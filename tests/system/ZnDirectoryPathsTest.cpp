// The path arithmetic of ZnDirectory and the splitting free functions: pure text, checked against tables of
// stated results.
#include <znutil/system/ZnDirectory.h>
#include <znutil/system/ZnPathFunctions.h>

#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "ScratchDirectory.h"

namespace {

using znutil_test::Text;

// A path function of two paths, its arguments and its stated result.
struct PathCase {
  char const *first, *second, *expected;
};

template <std::size_t N>
void ExpectResults(ZnString (*function)(ZnString const &, ZnString const &), PathCase const (&cases)[N]) {
  for (PathCase const &c : cases) {
    EXPECT_EQ(Text(function(c.first, c.second)), c.expected) << "arguments " << c.first << ", " << c.second;
  }
}

TEST(ZnDirectoryPathsTest, CreateAbsolutePathResolvesAgainstBase) {
  // The climb stops at the drive, and a bare drive keeps its separator; a drive-relative path is taken by its
  // colon; only leading ".." climb; a dot after the first letter climbs nothing.
  PathCase const cases[] = {
      {"C:\\a\\b", "..\\c", "C:\\a\\c"},        {"C:\\a\\b", "..\\..\\..\\..\\c", "C:\\c"},
      {"C:\\a\\b", "..", "C:\\a"},              {"C:\\a\\", "..", "C:\\"},
      {"C:\\a", "D:\\x", "D:\\x"},              {"C:\\a", "\\x", "C:\\x"},
      {"C:/a", "/x", "C:\\x"},                  {"C:/a/b", "../c", "C:\\a\\c"},
      {"C:\\a", "D:x", "D:x"},                  {"C:\\a", ".\\x", "C:\\a\\x"},
      {"C:\\a", ".", "C:\\a\\."},               {"C:\\a", "", "C:\\a\\"},
      {"C:\\a\\", "x", "C:\\a\\x"},             {"C:\\x\\y", "..\\a\\..\\b", "C:\\x\\a\\..\\b"},
      {"C:\\a\\b", "..foo", "C:\\a\\b\\..foo"}, {"\\tmp\\x", "..\\y", "\\tmp\\y"},
      {"\\tmp", "..\\..\\..", "\\"},            {"", "x", "\\x"},
      {"", "x.y", "\\x.y"},                     {"", "..\\x", "x"},
  };
  ExpectResults(&ZnDirectory::CreateAbsolutePath, cases);
}

TEST(ZnDirectoryPathsTest, CreateRelativePathFindsTheWayInLowerCase) {
  // An ancestor ends in a separator; a prefix inside a name is undone; without drives the first folder's
  // first character counts too.
  PathCase const cases[] = {
      {"c:\\a\\b", "c:\\a\\b", "."},                                     {"C:\\A\\B", "c:\\a\\b\\", "."},
      {"c:/a/b/", "C:\\A\\b", "."},                                      {"c:\\a\\b", "c:\\a\\c\\d", "..\\c\\d"},
      {"c:\\a\\b\\c", "c:\\a", "..\\..\\"},                              {"c:\\a", "c:\\a\\b", ".\\b"},
      {"c:\\a", "c:\\a\\b\\c", ".\\b\\c"},                               {"c:\\abc", "c:\\ab", "..\\ab"},
      {"c:\\ab", "c:\\abc", "..\\abc"},                                  {"c:\\a\\b", "c:\\x", "..\\..\\x"},
      {"c:\\a", "d:\\a", "d:\\a"},                                       {"C:\\A", "D:\\X\\", "d:\\x"},
      {"C:\\Data\\One", "C:\\Data\\Two\\File.TXT", "..\\two\\file.txt"}, {"\\a\\x", "\\b\\x", "..\\..\\b\\x"},
      {"/a/x", "/ab/x", "..\\..\\ab\\x"},                                {"\\a\\x", "\\a\\y", "..\\y"},
  };
  ExpectResults(&ZnDirectory::CreateRelativePath, cases);
}

TEST(ZnDirectoryPathsTest, RemoveRelativePartsFoldsRootedPaths) {
  // ".." above the root stays; a path that is not rooted is left alone.
  std::pair<char const *, char const *> const cases[] = {
      {"C:\\a\\.\\b\\..\\c\\", "C:\\a\\c"}, {"C:\\", "C:"},           {"\\", ""},
      {"\\..\\a", "\\..\\a"},               {"\\a\\..\\..", "\\.."},  {"a\\..\\b", "a\\..\\b"},
      {"C:a\\..\\b", "C:a\\..\\b"},         {"C:/a/./b", "C:\\a\\b"}, {"\\a\\\\b\\", "\\a\\b"},
      {"", ""}};
  for (auto const &[path, expected] : cases) {
    EXPECT_EQ(Text(ZnDirectory::RemoveRelativePartsFromAbsolutePath(path)), expected) << path;
  }
  // A piece past 255 characters after a drive is kept whole (found by fuzzing).
  std::string const longPath = "C:" + std::string(300, 'n') + ".e\\x\\..\\y";
  EXPECT_EQ(Text(ZnDirectory::RemoveRelativePartsFromAbsolutePath(longPath.c_str())), longPath);
  std::string const longRooted = "C:\\" + std::string(300, 'n') + "\\.\\y";
  EXPECT_EQ(Text(ZnDirectory::RemoveRelativePartsFromAbsolutePath(longRooted.c_str())),
            "C:\\" + std::string(300, 'n') + "\\y");
}

TEST(ZnDirectoryPathsTest, SeparatorHelpers) {
  EXPECT_TRUE(ZnDirectory::IsDirSplitChar('/') && ZnDirectory::IsDirSplitChar('\\'));
  EXPECT_FALSE(ZnDirectory::IsDirSplitChar(':') || ZnDirectory::IsDirSplitChar('\0'));
  std::pair<char const *, char const *> const strips[] = {{"", ""},   {"a", "a"},       {"a\\", "a"},
                                                          {"a/", "a"}, {"a\\\\", "a\\"}, {"\\", ""}};
  for (auto const &[path, stripped] : strips) {
    ZnString text(path);
    ZnDirectory::StripTrailingDirChar(text);
    EXPECT_EQ(Text(text), stripped) << path;
  }
  ZnString const mixed("C:\\a/b\\c/");
  EXPECT_EQ(Text(ZnDirectory::DosPathToUnix(mixed)), "C:/a/b/c/");
  EXPECT_EQ(Text(ZnDirectory::UnixPathToDos(mixed)), "C:\\a\\b\\c\\");
  EXPECT_EQ(Text(mixed), "C:\\a/b\\c/");
}

TEST(ZnDirectoryPathsTest, FreeFunctionsSplitLikeSplitPath) {
  using Row = std::array<std::string, 7>;  // the path; its name, directory, base, extension, drive, rest
  Row const rows[] = {
      {"C:\\tools\\App.exe", "App.exe", "C:\\tools\\", "App", ".exe", "C:", "\\tools\\App.exe"},
      {"a/b.c.d", "b.c.d", "a/", "b.c", ".d", "", "a/b.c.d"},
      {"D:name", "name", "D:", "name", "", "D:", "name"},
      {"\\dir.x\\noext", "noext", "\\dir.x\\", "noext", "", "", "\\dir.x\\noext"},
      {"folder\\", "", "folder\\", "", "", "", "folder\\"},
      {"", "", "", "", "", "", ""},
  };
  for (Row const &row : rows) {
    ZnString const path(row[0].c_str());
    EXPECT_EQ((Row{row[0], Text(ZnGetFileNameFromPath(path)), Text(ZnGetDirectoryFromPath(path)),
                   Text(ZnGetBaseFileFromPath(path)), Text(ZnGetExtensionFromPath(path)),
                   Text(ZnGetDriveFromPath(path)), Text(ZnRemoveDriveFromPath(path))}),
              row);
  }
}

TEST(ZnDirectoryPathsTest, NativePathsCrossTheSystemBorder) {
  // The drive is dropped, as before a system call (without a letter there is no drive); mixed separators
  // become one kind and a trailing one stays.
  std::pair<char const *, char const *> const toNative[] = {
      {"C:\\a\\b", "/a/b"}, {"c:/a\\b/", "/a/b/"}, {"\\a\\b\\\\", "/a/b//"}, {"a\\b", "a/b"},
      {"D:rel\\x", "rel/x"}, {"C:", ""},           {"1:\\a", "1:/a"},       {"", ""}};
  for (auto const &[path, native] : toNative) EXPECT_EQ(Text(ZnToNativePath(path)), native) << path;
  std::pair<char const *, char const *> const fromNative[] = {
      {"/a/b", "\\a\\b"}, {"/a/b/", "\\a\\b\\"}, {"a/b", "a\\b"}, {"/", "\\"}, {"", ""}, {"x\\y", "x\\y"},
  };
  for (auto const &[native, path] : fromNative) {
    EXPECT_EQ(Text(ZnFromNativePath(native)), path) << native;
    if (std::string(native).find('\\') == std::string::npos) {
      EXPECT_EQ(Text(ZnToNativePath(ZnFromNativePath(native))), native) << native;  // a round trip
    }
  }
}

}  // namespace
