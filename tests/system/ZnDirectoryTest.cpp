// ZnDirectory's listing and folder operations, inside a scratch folder.
#include <znutil/system/ZnDirectory.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <znutil/platform/UserInterface.h>
#include <znutil/text/ZnStringList.h>

#include <gtest/gtest.h>

#include "ScratchDirectory.h"

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

// Puts the current directory back at the end of a test that changes it.
class CurrentDirectoryGuard {
 public:
  ~CurrentDirectoryGuard() { fs::current_path(saved_); }

 private:
  fs::path saved_ = fs::current_path();
};

// A folder chooser for SelectDirectory that records where it started.
std::string chooserStart, chooserAnswer;
bool RecordingChooser(HWND, std::string const &start, std::string &chosen) {
  chooserStart = start;
  chosen = chooserAnswer;
  return !chooserAnswer.empty();
}

// Source tree: src/one.txt, src/two.dat, src/sub/three.txt, src/sub/deep/four.txt.
void MakeSourceTree(ScratchDirectory const &scratch) {
  fs::create_directories(scratch / "src/sub/deep");
  WriteFile(scratch / "src/one.txt", "one");
  WriteFile(scratch / "src/two.dat", "two");
  WriteFile(scratch / "src/sub/three.txt", "three");
  WriteFile(scratch / "src/sub/deep/four.txt", "four");
}

TEST(ZnDirectoryTest, OpenTrimsThePathListsEveryEntryAsASnapshotAndExistsFindsThem) {
  ScratchDirectory scratch;
  MakeSourceTree(scratch);
  WriteFile(scratch / "src/.profile");
  fs::permissions(WriteFile(scratch / "src/locked"), fs::perms::owner_write, fs::perm_options::remove);
  std::string const src = Backslashed(scratch / "src");
  ZnDirectory folder;
  ASSERT_TRUE(folder.Open(ZnString(("  " + src + "\\ \t").c_str())));
  EXPECT_EQ(Text(folder.GetPathName()), src);
  EXPECT_EQ(Text(folder.First()->GetFilePath()), src + "\\" + Text(folder.First()->GetFileName()));
  EXPECT_EQ(folder.Count(), 7);
  EXPECT_EQ(Listing(folder), (std::map<std::string, unsigned long>{{".", FILE_ATTRIBUTE_DIRECTORY},
                                                                   {"..", FILE_ATTRIBUTE_DIRECTORY},
                                                                   {"sub", FILE_ATTRIBUTE_DIRECTORY},
                                                                   {"one.txt", FILE_ATTRIBUTE_NORMAL},
                                                                   {"two.dat", FILE_ATTRIBUTE_NORMAL},
                                                                   {".profile", FILE_ATTRIBUTE_HIDDEN},
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

TEST(ZnDirectoryTest, CursorStopsAtTheEndAndAFailedOpenLeavesNothing) {
  ScratchDirectory scratch;
  MakeSourceTree(scratch);
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
  EXPECT_EQ(folder.Count(), 0);
  EXPECT_EQ(folder.First(), nullptr);
  EXPECT_FALSE(folder.Open(LibraryPath(scratch / "src/one.txt")));  // a file is not a folder
  ASSERT_TRUE(folder.Open(LibraryPath(scratch / "src")));
  folder.Close();
  EXPECT_EQ(folder.Count(), 0);
  EXPECT_EQ(folder.First(), nullptr);  EXPECT_EQ(OpenDescriptors(), descriptors);  // each search was closed
}

TEST(ZnDirectoryTest, CreateFolderReportsWhatItMadeOutermostFirst) {
  ScratchDirectory scratch;
  std::string const root = Backslashed(scratch.Path());
  ZnStringList created;
  created.Add("stale");
  ASSERT_TRUE(ZnDirectory::CreateFolder((root + "\\a\\b").c_str(), &created));
  EXPECT_EQ(Texts(created), (Strings{root + "\\a", root + "\\a\\b"}));
  EXPECT_TRUE(fs::is_directory(scratch / "a/b"));
  // Forward slashes work, and only the missing part is made.
  ASSERT_TRUE(ZnDirectory::CreateFolder((scratch / "a/c/d/").c_str(), &created));
  EXPECT_EQ(Texts(created), (Strings{root + "\\a\\c", root + "\\a\\c\\d"}));
  // An existing folder clears the list and succeeds.
  ASSERT_TRUE(ZnDirectory::CreateFolder((root + "\\a").c_str(), &created));
  EXPECT_EQ(created.GetCount(), 0);
  EXPECT_TRUE(ZnDirectory::CreateFolder((root + "\\e\\f").c_str(), nullptr));
  EXPECT_TRUE(fs::is_directory(scratch / "e/f"));

  WriteFile(scratch / "file");
  EXPECT_FALSE(ZnDirectory::CreateFolder(LibraryPath(scratch / "file/x/y"), &created));
  EXPECT_EQ(created.GetCount(), 0);
  CurrentDirectoryGuard guard;
  fs::current_path(scratch.Path());
  ASSERT_TRUE(ZnDirectory::CreateFolder("x/y", &created));
  EXPECT_EQ(Texts(created), (Strings{"x", "x\\y"}));
  EXPECT_TRUE(fs::is_directory(scratch / "x/y"));
}

TEST(ZnDirectoryTest, CopyMakesTheTargetAndTakesThePlainFilesOfOneFolderAndStopsAtAFailure) {
  ScratchDirectory scratch;
  MakeSourceTree(scratch);
  std::string const root = Backslashed(scratch.Path());
  // The subfolder is glued to both roots as it stands.
  ASSERT_TRUE(ZnDirectory::Copy("\\sub", (root + "\\src").c_str(), (root + "\\dst").c_str()));
  EXPECT_EQ(ReadFile(scratch / "dst/sub/three.txt"), "three");
  EXPECT_FALSE(fs::exists(scratch / "dst/sub/deep"));
  WriteFile(scratch / "src/sub/three.txt", "changed");
  ASSERT_TRUE(ZnDirectory::Copy("sub", (root + "\\src\\").c_str(), (root + "\\dst\\").c_str()));
  EXPECT_EQ(ReadFile(scratch / "dst/sub/three.txt"), "changed");
  // Folders where the files must go.
  fs::create_directories(scratch / "dst/one.txt");
  fs::create_directories(scratch / "dst/two.dat");
  EXPECT_FALSE(ZnDirectory::Copy("", (root + "\\src").c_str(), (root + "\\dst").c_str()));

  // The target is made first; an unlistable source only warns.
  EXPECT_FALSE(ZnDirectory::Copy("\\gone", (root + "\\src").c_str(), (root + "\\dst").c_str()));
  EXPECT_TRUE(fs::is_directory(scratch / "dst/gone"));

  WriteFile(scratch / "plain");
  testing::internal::CaptureStderr();
  bool const copied = ZnDirectory::Copy("\\plain", root.c_str(), (root + "\\dst").c_str());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "No files in source folder!\n");
  EXPECT_TRUE(copied);
}

TEST(ZnDirectoryTest, CopyFolderCopiesTreesAndIgnoresSingleFailures) {
  ScratchDirectory scratch;
  MakeSourceTree(scratch);
  std::string const root = Backslashed(scratch.Path());
  ASSERT_TRUE(ZnDirectory::CopyFolder((root + "\\src").c_str(), (root + "\\flat").c_str(), false));
  EXPECT_EQ(ReadFile(scratch / "flat/one.txt"), "one");
  EXPECT_EQ(ReadFile(scratch / "flat/two.dat"), "two");
  EXPECT_FALSE(fs::exists(scratch / "flat/sub"));

  ASSERT_TRUE(ZnDirectory::CopyFolder((root + "\\src\\").c_str(), (scratch / "tree").c_str(), true));
  EXPECT_EQ(ReadFile(scratch / "tree/sub/three.txt"), "three");
  EXPECT_EQ(ReadFile(scratch / "tree/sub/deep/four.txt"), "four");

  fs::create_directories(scratch / "blocked/one.txt");
  EXPECT_TRUE(ZnDirectory::CopyFolder((root + "\\src").c_str(), (root + "\\blocked").c_str(), false));
  EXPECT_EQ(ReadFile(scratch / "blocked/two.dat"), "two");

  EXPECT_FALSE(ZnDirectory::CopyFolder((root + "\\none").c_str(), (root + "\\out").c_str(), true));
  EXPECT_FALSE(fs::exists(scratch / "out"));
}

TEST(ZnDirectoryTest, CurrentDirectoryInBackslashFormWithItsLimit) {
  ScratchDirectory scratch;
  CurrentDirectoryGuard guard;
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

TEST(ZnDirectoryTest, SelectDirectoryNeedsAChooserAndRestoresTheCurrentDirectory) {
  ScratchDirectory scratch;
  MakeSourceTree(scratch);
  CurrentDirectoryGuard guard;
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

}  // namespace
