// The entries of a ZnDirectory listing: paths, sizes and times as the file
// system has them; names and attributes are in the listing test.
#include <znutil/system/ZnDirectoryFileInfo.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include <znutil/system/ZnDirectory.h>
#include <znutil/system/ZnFileTime.h>
#include <znutil/system/ZnSystemTime.h>

#include <gtest/gtest.h>

#include "ScratchDirectory.h"
#include "TestClocks.h"

namespace {

using namespace znutil_test;

// The entry named `name` of an open listing, or null.
ZnDirectoryFileInfo *Find(ZnDirectory &folder, std::string const &name) {
  for (ZnDirectoryFileInfo *entry = folder.First(); entry != nullptr; entry = folder.Next()) {
    if (Text(entry->GetFileName()) == name) return entry;
  }
  return nullptr;
}

TEST(ZnDirectoryFileInfoTest, PathSizeAndTimesMatchTheFileAndSizeKeepsTheLow32Bits) {
  ScratchDirectory scratch;
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

}  // namespace
