// ZnDirectory's listing, its entries and its folder operations, and the file operations among the free path
// functions, inside a scratch folder.
#include <znutil/system/ZnDirectory.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <znutil/platform/UserInterface.h>
#include <znutil/system/ZnFileTime.h>
#include <znutil/system/ZnPathFunctions.h>
#include <znutil/system/ZnSystemTime.h>
#include <znutil/text/ZnStringList.h>

#include <gtest/gtest.h>

#include "ScratchDirectory.h"
#include "TestClocks.h"

namespace {

namespace fs = std::filesystem;
using namespace znutil_test;
using Strings = std::vector<std::string>;

Strings Texts(ZnStringList const &list) {
  Strings texts;
  ZnListContext position;
  for (ZnString *text = list.First(position); text != nullptr; text = list.Next(position)) texts.push_back(Text(*text));
  return texts;
}

// Name to attribute bits of every entry, walked with First and Next.
std::map<std::string, unsigned long> Listing(ZnDirectory &folder) {
  std::map<std::string, unsigned long> entries;
  for (ZnDirectoryFileInfo *entry = folder.First(); entry != nullptr; entry = folder.Next()) {
    entries[Text(entry->GetFileName())] = entry->QueryAttributes();
  }
  return entries;
}

// The entry named `name` of an open listing, or null.
ZnDirectoryFileInfo *Find(ZnDirectory &folder, std::string const &name) {
  for (ZnDirectoryFileInfo *entry = folder.First(); entry != nullptr; entry = folder.Next()) {
    if (Text(entry->GetFileName()) == name) return entry;
  }
  return nullptr;
}

// A folder chooser for SelectDirectory that records where it started.
std::string chooserStart, chooserAnswer;
bool RecordingChooser(HWND, std::string const &start, std::string &chosen) {
  chooserStart = start;
  chosen = chooserAnswer;
  return !chooserAnswer.empty();
}

// A scratch folder, `root` in the library's form, with src/one.txt, src/two.dat, src/sub/three.txt and
// src/sub/deep/four.txt; the current directory is put back at the end.
class ZnDirectoryTest : public ::testing::Test {
 protected:
  ZnDirectoryTest() {
    fs::create_directories(scratch / "src/sub/deep");
    WriteFile(scratch / "src/one.txt", "one");
    WriteFile(scratch / "src/two.dat", "two");
    WriteFile(scratch / "src/sub/three.txt", "three");
    WriteFile(scratch / "src/sub/deep/four.txt", "four");
  }
  ~ZnDirectoryTest() override { fs::current_path(saved); }
  ZnString At(std::string const &relative) const { return (root + relative).c_str(); }

  ScratchDirectory scratch;
  std::string const root = Backslashed(scratch.Path());
  fs::path const saved = fs::current_path();
};
using ZnDirectoryFileInfoTest = ZnDirectoryTest;
using ZnPathFunctionsTest = ZnDirectoryTest;

TEST_F(ZnDirectoryTest, OpenTrimsThePathListsEveryEntryAsASnapshotAndExistsFindsThem) {
  WriteFile(scratch / "src/.profile");
  fs::permissions(WriteFile(scratch / "src/locked"), fs::perms::owner_write, fs::perm_options::remove);
  std::string const src = Backslashed(scratch / "src");
  ZnDirectory folder;
  ASSERT_TRUE(folder.Open(ZnString(("  " + src + "\\ \t").c_str())));
  EXPECT_EQ(Text(folder.GetPathName()), src);
  EXPECT_EQ(folder.Count(), 7);
  unsigned long const folderBit = FILE_ATTRIBUTE_DIRECTORY, plain = FILE_ATTRIBUTE_NORMAL;
  EXPECT_EQ(Listing(folder), (std::map<std::string, unsigned long>{
                                 {".", folderBit}, {"..", folderBit}, {"sub", folderBit}, {"one.txt", plain},
                                 {"two.dat", plain}, {".profile", FILE_ATTRIBUTE_HIDDEN},
                                 {"locked", FILE_ATTRIBUTE_READONLY}}));
  WriteFile(scratch / "src/late.txt");
  EXPECT_EQ(folder.Count(), 7);

  // Exists takes files and folders with either trailing separator.
  EXPECT_FALSE(ZnDirectory::Exists(""));
  for (std::string const &path : {src, src + "\\", scratch / "src/", src + "\\one.txt"}) {
    EXPECT_TRUE(ZnDirectory::Exists(path.c_str())) << path;
  }
  EXPECT_FALSE(ZnDirectory::Exists((src + "\\none.txt").c_str()));
}

TEST_F(ZnDirectoryTest, CursorStopsAtTheEndAndAFailedOpenLeavesNothing) {
  long const descriptors = OpenDescriptors();
  ZnDirectory folder;
  // A trailing slash stays, and the join puts a backslash after it.
  ASSERT_TRUE(folder.Open(ZnString((scratch / "src/sub/").c_str())));
  EXPECT_EQ(Text(folder.GetPathName()), scratch / "src/sub/");
  EXPECT_EQ(folder.Next(), nullptr);  // no First yet
  EXPECT_EQ(Text(folder.First()->GetFilePath()), scratch / "src/sub/\\" + Text(folder.First()->GetFileName()));
  int walked = 1;
  while (folder.Next() != nullptr) ++walked;
  EXPECT_EQ(walked, 4);
  EXPECT_EQ(folder.Next(), nullptr);
  EXPECT_NE(folder.First(), nullptr);  // First starts over
  EXPECT_FALSE(folder.Open(LibraryPath(scratch / "missing")));
  EXPECT_TRUE(folder.Count() == 0 && folder.First() == nullptr);
  EXPECT_FALSE(folder.Open(LibraryPath(scratch / "src/one.txt")));  // a file is not a folder
  ASSERT_TRUE(folder.Open(LibraryPath(scratch / "src")));
  folder.Close();
  EXPECT_TRUE(folder.Count() == 0 && folder.First() == nullptr);
  EXPECT_EQ(OpenDescriptors(), descriptors);  // each search was closed
}

TEST_F(ZnDirectoryTest, CreateFolderReportsWhatItMadeOutermostFirst) {
  ZnStringList created;
  created.Add("stale");
  ASSERT_TRUE(ZnDirectory::CreateFolder(At("\\a\\b"), &created));
  EXPECT_EQ(Texts(created), (Strings{root + "\\a", root + "\\a\\b"}));
  EXPECT_TRUE(fs::is_directory(scratch / "a/b"));
  // Forward slashes work, and only the missing part is made.
  ASSERT_TRUE(ZnDirectory::CreateFolder((scratch / "a/c/d/").c_str(), &created));
  EXPECT_EQ(Texts(created), (Strings{root + "\\a\\c", root + "\\a\\c\\d"}));
  // An existing folder clears the list and succeeds.
  ASSERT_TRUE(ZnDirectory::CreateFolder(At("\\a"), &created));
  EXPECT_EQ(created.GetCount(), 0);
  EXPECT_TRUE(ZnDirectory::CreateFolder(At("\\e\\f"), nullptr));
  EXPECT_TRUE(fs::is_directory(scratch / "e/f"));

  WriteFile(scratch / "file");
  EXPECT_FALSE(ZnDirectory::CreateFolder(LibraryPath(scratch / "file/x/y"), &created));
  EXPECT_EQ(created.GetCount(), 0);
  fs::current_path(scratch.Path());
  ASSERT_TRUE(ZnDirectory::CreateFolder("x/y", &created));
  EXPECT_EQ(Texts(created), (Strings{"x", "x\\y"}));
  EXPECT_TRUE(fs::is_directory(scratch / "x/y"));
}

TEST_F(ZnDirectoryTest, CopyMakesTheTargetAndTakesThePlainFilesOfOneFolderAndStopsAtAFailure) {
  // The subfolder is glued to both roots as it stands.
  ASSERT_TRUE(ZnDirectory::Copy("\\sub", At("\\src"), At("\\dst")));
  EXPECT_EQ(ReadFile(scratch / "dst/sub/three.txt"), "three");
  EXPECT_FALSE(fs::exists(scratch / "dst/sub/deep"));
  WriteFile(scratch / "src/sub/three.txt", "changed");
  ASSERT_TRUE(ZnDirectory::Copy("sub", At("\\src\\"), At("\\dst\\")));
  EXPECT_EQ(ReadFile(scratch / "dst/sub/three.txt"), "changed");
  // Folders where the files must go.
  fs::create_directories(scratch / "dst/one.txt");
  fs::create_directories(scratch / "dst/two.dat");
  EXPECT_FALSE(ZnDirectory::Copy("", At("\\src"), At("\\dst")));

  // The target is made first; an unlistable source only warns.
  EXPECT_FALSE(ZnDirectory::Copy("\\gone", At("\\src"), At("\\dst")));
  EXPECT_TRUE(fs::is_directory(scratch / "dst/gone"));

  WriteFile(scratch / "plain");
  testing::internal::CaptureStderr();
  bool const copied = ZnDirectory::Copy("\\plain", root.c_str(), At("\\dst"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "No files in source folder!\n");
  EXPECT_TRUE(copied);
}

TEST_F(ZnDirectoryTest, CopyFolderCopiesTreesAndIgnoresSingleFailures) {
  ASSERT_TRUE(ZnDirectory::CopyFolder(At("\\src"), At("\\flat"), false));
  EXPECT_EQ(ReadFile(scratch / "flat/one.txt"), "one");
  EXPECT_EQ(ReadFile(scratch / "flat/two.dat"), "two");
  EXPECT_FALSE(fs::exists(scratch / "flat/sub"));

  ASSERT_TRUE(ZnDirectory::CopyFolder(At("\\src\\"), (scratch / "tree").c_str(), true));
  EXPECT_EQ(ReadFile(scratch / "tree/sub/three.txt"), "three");
  EXPECT_EQ(ReadFile(scratch / "tree/sub/deep/four.txt"), "four");

  fs::create_directories(scratch / "blocked/one.txt");
  EXPECT_TRUE(ZnDirectory::CopyFolder(At("\\src"), At("\\blocked"), false));
  EXPECT_EQ(ReadFile(scratch / "blocked/two.dat"), "two");

  EXPECT_FALSE(ZnDirectory::CopyFolder(At("\\none"), At("\\out"), true));
  EXPECT_FALSE(fs::exists(scratch / "out"));
}

TEST_F(ZnDirectoryTest, CurrentDirectoryInBackslashFormWithItsLimit) {
  ASSERT_TRUE(ZnDirectory::SetCurrentDirectoryA(LibraryPath(scratch.Path())));
  EXPECT_EQ(Text(ZnDirectory::CurrentDirectory()), Backslashed(scratch.Path()));
  EXPECT_FALSE(ZnDirectory::SetCurrentDirectoryA(LibraryPath(scratch / "missing")));
  EXPECT_EQ(fs::current_path().string(), scratch.Path());
  // The 511-character buffer holds 510 characters and the terminator.
  std::string deep = scratch.Path();
  while (deep.size() < 450) deep += "/" + std::string(40, 'd');
  deep += "/" + std::string(509 - deep.size(), 'e');
  for (std::string const &path : {deep, deep + "e"}) {
    fs::create_directories(path);
    ASSERT_TRUE(ZnDirectory::SetCurrentDirectoryA(LibraryPath(path)));
    EXPECT_EQ(Text(ZnDirectory::CurrentDirectory()), path.size() == 510 ? Backslashed(path) : "") << path.size();
  }
}

TEST_F(ZnDirectoryTest, SelectDirectoryNeedsAChooserAndRestoresTheCurrentDirectory) {
  fs::current_path(scratch.Path());
  ZnString const src = LibraryPath(scratch / "src");
  EXPECT_EQ(Text(ZnDirectory::SelectDirectory(nullptr, src)), "");
  EXPECT_EQ(fs::current_path().string(), scratch.Path());

  znutil::platform::FolderChooser const previous = znutil::platform::SetFolderChooser(&RecordingChooser);
  chooserAnswer = "sub/deep";  // relative to where the dialog starts
  EXPECT_EQ(Text(ZnDirectory::SelectDirectory(nullptr, src)), Backslashed(scratch / "src/sub/deep"));
  EXPECT_EQ(chooserStart, Text(src));
  EXPECT_EQ(fs::current_path().string(), scratch.Path());
  chooserAnswer.clear();  // cancelled
  EXPECT_EQ(Text(ZnDirectory::SelectDirectory(nullptr, "")), "");
  EXPECT_EQ(chooserStart, Backslashed(scratch.Path()));
  chooserAnswer = Backslashed(scratch / "missing");
  EXPECT_EQ(Text(ZnDirectory::SelectDirectory(nullptr, "")), "");
  EXPECT_EQ(fs::current_path().string(), scratch.Path());
  znutil::platform::SetFolderChooser(previous);
}

TEST_F(ZnDirectoryFileInfoTest, PathSizeAndTimesMatchTheFileAndSizeKeepsTheLow32Bits) {
  std::string const path = WriteFile(scratch / "stamped.txt", "0123456789");
  ZnFileTime written(0);
  ASSERT_TRUE(written.SetFromFile(path.c_str()));
  ZnDirectory folder;
  ASSERT_TRUE(folder.Open(LibraryPath(scratch.Path())));
  EXPECT_EQ(Find(folder, ".")->Size(), 0u);
  ZnDirectoryFileInfo *file = Find(folder, "stamped.txt");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(Text(file->GetFilePath()), Backslashed(path));
  EXPECT_EQ(file->Size(), 10u);

  ZnFileTime modified(1), created(0);
  file->QueryModTime(&modified);
  file->QueryCreateTime(&created);
  EXPECT_TRUE(modified == written);
  EXPECT_TRUE(created <= modified && created > ZnFileTime(0));
  // The target's kind decides whether the fields show local time.
  ScopedTimeZone zone("XYZ-3");
  ZnSystemTime modifiedFields(1), createdFields(0);
  file->QueryModTimeAsSystemTime(&modifiedFields);
  file->QueryCreateTimeAsSystemTime(&createdFields);
  EXPECT_EQ(FieldsOf(modifiedFields), FieldsOf(ZnSystemTime(written, 1)));
  EXPECT_EQ(FieldsOf(createdFields), FieldsOf(ZnSystemTime(created, 0)));
  EXPECT_NE(FieldsOf(createdFields), FieldsOf(ZnSystemTime(created, 1)));

  // Size keeps the low 32 bits of a huge file.
  std::error_code error;
  std::filesystem::resize_file(WriteFile(scratch / "huge.bin", ""), (std::uintmax_t{1} << 32) + 5, error);  // sparse
  if (error) GTEST_SKIP() << "the file system cannot hold a 4 GiB file: " << error.message();
  ASSERT_TRUE(folder.Open(LibraryPath(scratch.Path())));
  ASSERT_NE(Find(folder, "huge.bin"), nullptr);
  EXPECT_EQ(Find(folder, "huge.bin")->Size(), 5u);
}

TEST_F(ZnPathFunctionsTest, CopyFileCopiesBytesAndModeAndReplacesButRefusesFoldersMissingFilesAndItself) {
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

TEST_F(ZnPathFunctionsTest, DoesFileExistOnlyForReadableFiles) {
  std::string const file = WriteFile(scratch / "here.txt");
  EXPECT_TRUE(ZnDoesFileExist(LibraryPath(file)));
  EXPECT_TRUE(ZnDoesFileExist(ZnString(file.c_str())));
  EXPECT_FALSE(ZnDoesFileExist(LibraryPath(scratch.Path())));
  EXPECT_FALSE(ZnDoesFileExist(LibraryPath(scratch / "gone.txt")));
  EXPECT_FALSE(ZnDoesFileExist(""));
}

TEST_F(ZnPathFunctionsTest, SystemDirectoryIsMadeFromTheEnvironment) {
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
  fs::current_path(scratch.Path());
  setenv("ZNUTIL_SYSTEM_DIR", "s/d", 1);  // relative, and its first folder has one letter
  EXPECT_EQ(Text(ZnGetSystemDirectory()), "s\\d");
  EXPECT_TRUE(fs::is_directory(scratch / "s/d"));
  // Longer than the 260-character buffer of the original call.
  setenv("ZNUTIL_SYSTEM_DIR", (scratch / (std::string(200, 'x') + "/" + std::string(80, 'y'))).c_str(), 1);
  EXPECT_EQ(Text(ZnGetSystemDirectory()), "");
}

}  // namespace
