// The file operations among the free path functions; the splitting ones are
// in the path table test.
#include <znutil/system/ZnPathFunctions.h>

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "ScratchDirectory.h"
#include "TestClocks.h"

namespace {

namespace fs = std::filesystem;
using namespace znutil_test;

TEST(ZnPathFunctionsTest, CopyFileCopiesBytesAndModeAndReplacesButRefusesFoldersMissingFilesAndItself) {
  ScratchDirectory scratch;
  long const descriptors = OpenDescriptors();
  std::string const bytes("#!/bin/sh\0binary", 16);
  std::string source = WriteFile(scratch / "tool.sh", bytes);
  fs::permissions(source, fs::perms::owner_all | fs::perms::group_read);
  WriteFile(scratch / "copy.sh", "an older and longer text");
  ASSERT_TRUE(ZnCopyFile(LibraryPath(source), LibraryPath(scratch / "copy.sh")));
  EXPECT_EQ(ReadFile(scratch / "copy.sh"), bytes);
  EXPECT_EQ(fs::status(scratch / "copy.sh").permissions(), fs::perms::owner_all | fs::perms::group_read);

  // Folders, missing files and the file itself are refused.
  source = WriteFile(scratch / "keep.txt", "kept");
  fs::create_directory(scratch / "folder");
  EXPECT_FALSE(ZnCopyFile(LibraryPath(scratch / "missing"), LibraryPath(scratch / "out")));
  EXPECT_FALSE(fs::exists(scratch / "out"));
  EXPECT_FALSE(ZnCopyFile(LibraryPath(scratch / "folder"), LibraryPath(scratch / "out")));
  EXPECT_FALSE(ZnCopyFile(LibraryPath(source), LibraryPath(scratch / "folder")));
  EXPECT_FALSE(ZnCopyFile(LibraryPath(source), LibraryPath(source)));
  EXPECT_FALSE(ZnCopyFile(LibraryPath(source), LibraryPath(scratch / "folder/../keep.txt")));
  EXPECT_EQ(ReadFile(source), "kept");
  EXPECT_EQ(OpenDescriptors(), descriptors) << "every copy closed its files, refused or not";
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
  ScopedVariable system("ZNUTIL_SYSTEM_DIR", scratch / "system/dir");
  ScopedVariable config("XDG_CONFIG_HOME", scratch / "xdg");
  ScopedVariable home("HOME", scratch / "home");
  EXPECT_EQ(Text(ZnGetSystemDirectory()), Backslashed(scratch / "system/dir"));
  EXPECT_TRUE(fs::is_directory(scratch / "system/dir"));
  setenv("ZNUTIL_SYSTEM_DIR", "", 1);  // empty counts as unset
  EXPECT_EQ(Text(ZnGetSystemDirectory()), Backslashed(scratch / "xdg"));
  setenv("XDG_CONFIG_HOME", "", 1);
  EXPECT_EQ(Text(ZnGetSystemDirectory()), Backslashed(scratch / "home/.config"));
  EXPECT_TRUE(fs::is_directory(scratch / "home/.config"));
  {
    fs::path const previous = fs::current_path();
    fs::current_path(scratch.Path());
    setenv("ZNUTIL_SYSTEM_DIR", "s/d", 1);  // relative, and its first folder has one letter
    EXPECT_EQ(Text(ZnGetSystemDirectory()), "s\\d");
    EXPECT_TRUE(fs::is_directory(scratch / "s/d"));
    fs::current_path(previous);
  }
  // Longer than the 260-character buffer of the original call.
  setenv("ZNUTIL_SYSTEM_DIR", (scratch / (std::string(200, 'x') + "/" + std::string(80, 'y'))).c_str(), 1);
  EXPECT_EQ(Text(ZnGetSystemDirectory()), "");
}

}  // namespace
