#include <znutil/system/ZnFileInformation.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "ImageBuilder.h"
#include "ScratchDirectory.h"
#include "TestClocks.h"

using namespace imagetest;
using namespace znutil_test;

namespace {

namespace fs = std::filesystem;

class ZnFileInformationTest : public ::testing::Test {
 protected:
  ScratchDirectory folder;
  std::string file = WriteBytes(folder / "data.bin", Bytes(1234, 7));
};

TEST_F(ZnFileInformationTest, ReadsSizeAttributesAndTimes) {
  timespec const times[2] = {{1000000000, 123456789}, {1600000000, 987654321}};  // access, write
  ASSERT_EQ(0, utimensat(AT_FDCWD, file.c_str(), times, 0));
  ZnFileInformation info(file.c_str());
  ASSERT_TRUE(info.Valid());
  EXPECT_EQ(1234u, info.Size());
  EXPECT_EQ(FILE_ATTRIBUTE_NORMAL, info.Attributes());
  EXPECT_EQ(TicksOfUnix(1000000000, 123456789), TicksOf(info.AccessedTime()));
  EXPECT_EQ(TicksOfUnix(1600000000, 987654321), TicksOf(info.ModifiedTime()));
  // Birth or status change time: in any case after the year 2000.
  EXPECT_GT(TicksOf(info.CreationTime()), TicksOfUnix(946684800, 0));

  fs::resize_file(file, (std::uint64_t{1} << 32) + 5);  // sparse: takes no room
  fs::permissions(file, fs::perms::owner_write, fs::perm_options::remove);
  ASSERT_TRUE(info.Refresh());
  EXPECT_EQ(FILE_ATTRIBUTE_READONLY, info.Attributes());
  EXPECT_EQ(5u, info.Size());  // the low 32 bits
}

TEST_F(ZnFileInformationTest, PathIsFullInBackslashFormAndMissingFilesAndFoldersAreNotValid) {
  fs::path const previous = fs::current_path();
  fs::current_path(folder.Path());
  ZnFileInformation info("sub/../data.bin");
  fs::current_path(previous);
  EXPECT_TRUE(info.Valid());
  EXPECT_EQ(info.Path(), Backslashed(file).c_str());

  ZnFileInformation missing((folder / "missing.bin").c_str());
  EXPECT_FALSE(missing.Valid());
  EXPECT_EQ(missing.Path(), Backslashed(folder / "missing.bin").c_str());
  EXPECT_FALSE(ZnFileInformation(folder.Path().c_str()).Valid());
  // A named pipe with no writer is looked at without waiting for one.
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_TRUE(ZnFileInformation((folder / "pipe").c_str()).Valid());
  ZnFileInformation none;
  EXPECT_FALSE(none.Valid());
  EXPECT_EQ(none.Path(), NULL_STRING);
  EXPECT_FALSE(none.Refresh());
  // The full form of an empty path is the current folder, never valid.
  EXPECT_FALSE(none.Open(NULL_STRING));
  EXPECT_EQ(none.Path(), ZnString().ToPath());
}

TEST_F(ZnFileInformationTest, FailedRefreshKeepsTheFormerFactsAsNotValid) {
  long const descriptors = OpenDescriptors();
  ZnFileInformation info(file.c_str());
  WriteBytes(file, Bytes(99, 1));
  ZnFileInformation const copy = info;
  EXPECT_TRUE(info.Refresh());
  EXPECT_EQ(99u, info.Size());
  EXPECT_EQ(1234u, copy.Size());  // a deep copy
  EXPECT_TRUE(copy.Valid());
  fs::remove(file);
  EXPECT_FALSE(info.Refresh());
  EXPECT_FALSE(info.Valid());
  EXPECT_EQ(99u, info.Size());
  EXPECT_EQ(OpenDescriptors(), descriptors);  // each refresh closed its file
}

}  // namespace
