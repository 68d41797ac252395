#include <znutil/values/ZnMemoryStream.h>

#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/values/ZnStreamException.h>

#include "StreamTestSupport.h"

namespace {

using znutil_test::Thrown;

int Position(ZnMemoryStream const &stream) {
  int length = -1;
  stream.GetBuffer(length);
  return length;
}

TEST(ZnMemoryStreamTest, OwnedBlockDoublesOrGrowsToWhatTheWriteNeeds) {
  ZnMemoryStream stream;
  std::vector<char> const bytes(5000, 'x');
  stream.WriteBytes(5000, bytes.data(), false);
  // Doubling 2,048 is not enough: the block is now exactly 5,000 bytes,
  // which a seek to the position itself shows, since the bound is strict.
  EXPECT_EQ(Thrown([&] { stream.Seek(0); }), ZnStreamSeekError);
  stream << 'y';  // doubles to 10,000
  EXPECT_EQ(Thrown([&] { stream.Seek(10000 - 5001 - 1); }), ZnStreamOk);
  EXPECT_EQ(Thrown([&] { stream.Seek(1); }), ZnStreamSeekError);
  int length = 0;
  char const *block = stream.GetBuffer(length);
  EXPECT_EQ(length, 9999);
  EXPECT_EQ(std::memcmp(block, bytes.data(), 5000), 0);
  EXPECT_EQ(block[5000], 'y');
  EXPECT_EQ(block[5001], 0);  // grown blocks are zeroed
}

TEST(ZnMemoryStreamTest, SeeksAreRelativeAndStrictlyInsideTheBlock) {
  char block[16] = {};
  ZnMemoryStream stream(block, 16);
  EXPECT_EQ(Thrown([&] { stream.Seek(15); }), ZnStreamOk);
  EXPECT_EQ(Position(stream), 15);
  EXPECT_EQ(Thrown([&] { stream.Seek(1); }), ZnStreamSeekError);
  EXPECT_EQ(Position(stream), 15);
  EXPECT_EQ(Thrown([&] { stream.Seek(-15); }), ZnStreamOk);
  // Before the start wraps around as unsigned and fails too.
  EXPECT_EQ(Thrown([&] { stream.Seek(-1); }), ZnStreamSeekError);
  EXPECT_EQ(Position(stream), 0);
  EXPECT_EQ(stream.Flush(), ZnStreamOk);
}

TEST(ZnMemoryStreamTest, CallersBlockNeverGrows) {
  char block[8] = {};
  ZnMemoryStream stream(block, 8);
  stream << 0x11111111 << 0x22222222;  // fits exactly
  EXPECT_EQ(Position(stream), 8);
  EXPECT_EQ(Thrown([&] { stream << 'z'; }), ZnStreamWriteError);
  EXPECT_EQ(Position(stream), 8);
  EXPECT_EQ(block[7], 0x22);

  ZnMemoryStream none(block, -4);  // a negative size is an empty block
  EXPECT_EQ(Thrown([&] { none << 'z'; }), ZnStreamWriteError);
  ZnMemoryStream null(nullptr, 0);
  EXPECT_EQ(Thrown([&] { null.WriteBytes(0, "", false); }), ZnStreamOk);
  EXPECT_EQ(Thrown([&] { none.Seek(0); }), ZnStreamSeekError);
}

TEST(ZnMemoryStreamTest, ReadsStopAtTheCapacityNotAtTheLastByteWritten) {
  ZnMemoryStream stream;
  stream << 5;
  stream.Seek(-4);
  long long both = -1;
  stream >> both;  // four written bytes and four zeros
  EXPECT_EQ(both, 5);
  std::vector<char> rest(2048 - 8);
  EXPECT_EQ(Thrown([&] { stream.ReadBytes(static_cast<unsigned int>(rest.size()), rest.data(), false); }), ZnStreamOk);
  char more = 0;
  EXPECT_EQ(Thrown([&] { stream >> more; }), ZnStreamReadError);
}

TEST(ZnMemoryStreamTest, SetStatusSilencesWritesUntilAReadSucceeds) {
  ZnMemoryStream stream;
  stream << 1;
  stream.SetStatus(ZnStreamWriteError);
  EXPECT_EQ(stream.WriteBytes(4, "abcd", false), ZnStreamWriteError);
  EXPECT_EQ(Position(stream), 4);
  EXPECT_EQ(stream.Flush(), ZnStreamWriteError);
  EXPECT_EQ(stream.Seek(-4), ZnStreamWriteError);
  int value = 0;
  stream >> value;
  EXPECT_EQ(value, 1);
  EXPECT_EQ(stream.Status(), ZnStreamOk);
}

TEST(ZnMemoryStreamTest, CopiesShareTheBlockAndReleaseItOnce) {
  auto *original = new ZnMemoryStream;
  *original << 1;
  ZnMemoryStream copy(*original);
  ZnMemoryStream assigned;
  assigned = *original;
  *original << 2;
  int length = 0;
  EXPECT_EQ(copy.GetBuffer(length), original->GetBuffer(length));
  delete original;
  // The copies still own the shared block; one grows away from it.
  std::vector<char> const big(3000, 'g');
  copy.WriteBytes(3000, big.data(), false);
  int first = 0, second = 0;
  assigned.Seek(-4);  // the copy took the position of the moment
  assigned >> first >> second;
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 2);
  assigned = assigned;
  EXPECT_EQ(Position(assigned), 8);
}

}  // namespace
