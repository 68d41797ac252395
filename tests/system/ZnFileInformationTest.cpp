#include <znutil/system/ZnFileInformation.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>
#include <znutil/platform/File.h>

#include "ImageBuilder.h"

using namespace imagetest;

namespace {

std::uint64_t Units(FILETIME const &time) { return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime; }

// 100 ns units since 1601 of a Unix time.
std::uint64_t UnitsOf(std::int64_t seconds, long nanoseconds) {
  return static_cast<std::uint64_t>(seconds + 11644473600) * 10000000 + nanoseconds / 100;
}

// The library's form of a path: backslashes.
std::string Backslashed(std::string path) {
  for (char &c : path)
    if (c == '/') c = '\\';
  return path;
}

class ZnFileInformationTest : public ::testing::Test {
 protected:
  TempDirectory folder;
  std::string file = folder.Write("data.bin", Bytes(1234, 7));
};

TEST_F(ZnFileInformationTest, ReadsSizeAttributesAndTimes) {
  timespec const times[2] = {{1000000000, 123456789}, {1600000000, 987654321}};  // access, write
  ASSERT_EQ(0, utimensat(AT_FDCWD, file.c_str(), times, 0));
  ZnFileInformation info(file.c_str());
  ASSERT_TRUE(info.Valid());
  EXPECT_EQ(1234u, info.Size());
  EXPECT_EQ(FILE_ATTRIBUTE_NORMAL, info.Attributes());
  EXPECT_EQ(UnitsOf(1000000000, 123456789), Units(info.AccessedTime()));
  EXPECT_EQ(UnitsOf(1600000000, 987654321), Units(info.ModifiedTime()));
  // Birth or status change time: in any case after the year 2000.
  EXPECT_GT(Units(info.CreationTime()), UnitsOf(946684800, 0));
}

TEST_F(ZnFileInformationTest, FileTheOwnerCannotWriteIsReadOnly) {
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  ZnFileInformation info(file.c_str());
  std::filesystem::permissions(file, std::filesystem::perms::owner_all);
  EXPECT_TRUE(info.Valid());
  EXPECT_EQ(FILE_ATTRIBUTE_READONLY, info.Attributes());
}

TEST_F(ZnFileInformationTest, SizeIsTheLow32Bits) {
  std::filesystem::resize_file(file, (std::uint64_t{1} << 32) + 5);  // sparse: takes no room
  EXPECT_EQ(5u, ZnFileInformation(file.c_str()).Size());
}

TEST_F(ZnFileInformationTest, MissingFilesAndFoldersAreNotValid) {
  ZnFileInformation missing((folder.Path() / "missing.bin").c_str());
  EXPECT_FALSE(missing.Valid());
  EXPECT_EQ(missing.Path(), Backslashed((folder.Path() / "missing.bin").string()).c_str());
  EXPECT_FALSE(ZnFileInformation(folder.Path().c_str()).Valid());
  ZnFileInformation none;
  EXPECT_FALSE(none.Valid());
  EXPECT_EQ(none.Path(), NULL_STRING);
  EXPECT_FALSE(none.Refresh());
  // The full form of an empty path is the current folder, never valid.
  EXPECT_FALSE(none.Open(NULL_STRING));
  EXPECT_EQ(none.Path(), ZnString().ToPath());
}

TEST_F(ZnFileInformationTest, PathIsFullInBackslashForm) {
  std::filesystem::path const previous = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  ZnFileInformation info("sub/../data.bin");
  std::filesystem::current_path(previous);
  EXPECT_TRUE(info.Valid());
  EXPECT_EQ(info.Path(), Backslashed(file).c_str());
}

TEST_F(ZnFileInformationTest, FailedRefreshKeepsTheFormerFactsAsNotValid) {
  ZnFileInformation info(file.c_str());
  WriteBytes(file, Bytes(99, 1));
  ZnFileInformation const copy = info;
  EXPECT_TRUE(info.Refresh());
  EXPECT_EQ(99u, info.Size());
  EXPECT_EQ(1234u, copy.Size());  // a deep copy
  EXPECT_TRUE(copy.Valid());
  std::filesystem::remove(file);
  EXPECT_FALSE(info.Refresh());
  EXPECT_FALSE(info.Valid());
  EXPECT_EQ(99u, info.Size());
}

}  // namespace
