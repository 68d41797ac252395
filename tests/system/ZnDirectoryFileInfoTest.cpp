// The entries of a ZnDirectory listing: names, paths, attributes, sizes and
// times as the file system has them.
#include <znutil/system/ZnDirectoryFileInfo.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include <znutil/system/ZnDirectory.h>
#include <znutil/system/ZnFileTime.h>
#include <znutil/system/ZnSystemTime.h>

#include <gtest/gtest.h>

#include "ScratchDirectory.h"

namespace {

namespace fs = std::filesystem;
using namespace znutil_test;

// The entry named `name` of an open listing, or null.
ZnDirectoryFileInfo *Find(ZnDirectory &folder, std::string const &name) {
  for (ZnDirectoryFileInfo *entry = folder.First(); entry != nullptr; entry = folder.Next()) {
    if (Text(entry->GetFileName()) == name) return entry;
  }
  return nullptr;
}

bool SameFields(SYSTEMTIME const &left, SYSTEMTIME const &right) {
  return left.wYear == right.wYear && left.wMonth == right.wMonth && left.wDay == right.wDay &&
         left.wHour == right.wHour && left.wMinute == right.wMinute && left.wSecond == right.wSecond &&
         left.wMilliseconds == right.wMilliseconds;
}

TEST(ZnDirectoryFileInfoTest, NamesPathsAndSizes) {
  ScratchDirectory scratch;
  WriteFile(scratch / "ten.txt", "0123456789");
  fs::create_directory(scratch / "folder");
  ZnDirectory folder;
  ASSERT_TRUE(folder.Open(Backslashed(scratch.Path()).c_str()));
  ZnDirectoryFileInfo *file = Find(folder, "ten.txt");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(Text(file->GetFilePath()), Backslashed(scratch / "ten.txt"));
  EXPECT_EQ(file->Size(), 10u);
  ZnDirectoryFileInfo *sub = Find(folder, "folder");
  ASSERT_NE(sub, nullptr);
  EXPECT_EQ(sub->QueryAttributes(), FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(sub->Size(), 0u);
}

TEST(ZnDirectoryFileInfoTest, SizeKeepsTheLow32BitsOfAHugeFile) {
  ScratchDirectory scratch;
  std::string const path = WriteFile(scratch / "huge.bin", "");
  std::uintmax_t const huge = (std::uintmax_t{1} << 32) + 5;
  std::error_code error;
  fs::resize_file(path, huge, error);  // sparse: no 4 GiB are written
  if (error) GTEST_SKIP() << "the file system cannot hold a 4 GiB file: " << error.message();
  ZnDirectory folder;
  ASSERT_TRUE(folder.Open(Backslashed(scratch.Path()).c_str()));
  ZnDirectoryFileInfo *file = Find(folder, "huge.bin");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->Size(), 5u);
}

TEST(ZnDirectoryFileInfoTest, HiddenAndReadOnlyFollowTheLinuxConventions) {
  ScratchDirectory scratch;
  WriteFile(scratch / ".profile");
  std::string const locked = WriteFile(scratch / "locked");
  fs::permissions(locked, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
  ZnDirectory folder;
  ASSERT_TRUE(folder.Open(Backslashed(scratch.Path()).c_str()));
  EXPECT_EQ(Find(folder, ".profile")->QueryAttributes(), FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(Find(folder, "locked")->QueryAttributes(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Find(folder, ".")->QueryAttributes(), FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(Find(folder, "..")->QueryAttributes(), FILE_ATTRIBUTE_DIRECTORY);
}

TEST(ZnDirectoryFileInfoTest, TimesMatchTheFileAndKeepTheTargetKind) {
  ScratchDirectory scratch;
  std::string const path = WriteFile(scratch / "stamped.txt");
  ZnFileTime written(0);
  ASSERT_TRUE(written.SetFromFile(Backslashed(path).c_str()));
  ZnDirectory folder;
  ASSERT_TRUE(folder.Open(Backslashed(scratch.Path()).c_str()));
  ZnDirectoryFileInfo *file = Find(folder, "stamped.txt");
  ASSERT_NE(file, nullptr);

  ZnFileTime modified(1), created(0);
  file->QueryModTime(&modified);
  file->QueryCreateTime(&created);
  EXPECT_TRUE(modified == written);
  EXPECT_TRUE(created <= modified);
  EXPECT_TRUE(created > ZnFileTime(0));

  ZnSystemTime modifiedFields(1), createdFields(1);
  file->QueryModTimeAsSystemTime(&modifiedFields);
  file->QueryCreateTimeAsSystemTime(&createdFields);
  EXPECT_TRUE(SameFields(modifiedFields, ZnSystemTime(written, 1)));
  EXPECT_TRUE(SameFields(createdFields, ZnSystemTime(created, 1)));
}

}  // namespace
