#include <znutil/values/ZnMemoryStream.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/values/ZnStreamException.h>

#include "StreamTestSupport.h"

namespace {

using znutil_test::Thrown;

// The block up to the position, which is all GetBuffer tells of its length.
std::string Contents(ZnMemoryStream const &stream) {
  int length = -1;
  char const *block = stream.GetBuffer(length);
  return std::string(block, block + length);
}

TEST(ZnMemoryStreamTest, OwnedBlockDoublesOrGrowsToWhatTheWriteNeeds) {
  ZnMemoryStream stream;
  std::string const bytes(5000, 'x');
  stream.WriteBytes(5000, bytes.data(), false);
  // Doubling 2,048 is not enough: the block is now exactly 5,000 bytes,
  // which a seek to the position itself shows, since the bound is strict.
  EXPECT_EQ(Thrown([&] { stream.Seek(0); }), ZnStreamSeekError);
  stream << 'y';  // doubles to 10,000
  EXPECT_EQ(Thrown([&] { stream.Seek(10000 - 5001 - 1); }), ZnStreamOk);
  EXPECT_EQ(Thrown([&] { stream.Seek(1); }), ZnStreamSeekError);
  EXPECT_EQ(Contents(stream), bytes + 'y' + std::string(9999 - 5001, '\0'));  // grown blocks are zeroed
}

TEST(ZnMemoryStreamTest, CallersBlockNeverGrowsAndSeeksStayStrictlyInside) {
  char block[8] = {};
  ZnMemoryStream stream(block, 8);
  stream << 0x11111111 << 0x22222222;  // fits exactly
  EXPECT_EQ(Thrown([&] { stream << 'z'; }), ZnStreamWriteError);
  EXPECT_EQ(Contents(stream), "\x11\x11\x11\x11\x22\x22\x22\x22");
  EXPECT_EQ(Thrown([&] { stream.Seek(0); }), ZnStreamSeekError);  // to the capacity
  EXPECT_EQ(Thrown([&] { stream.Seek(-8); }), ZnStreamOk);
  // Before the start wraps around as unsigned and fails too.
  EXPECT_EQ(Thrown([&] { stream.Seek(-1); }), ZnStreamSeekError);
  EXPECT_EQ(Contents(stream), "");

  // A one-byte block holds one byte; a negative size is an empty block.
  char one = 0;
  ZnMemoryStream single(&one, 1), none(block, -4), null(nullptr, 0);
  EXPECT_EQ((std::vector<ZnStreamError>{Thrown([&] { single << 'a'; }), Thrown([&] { single << 'b'; }),
                                        Thrown([&] { none << 'z'; }), Thrown([&] { none.Seek(0); }),
                                        Thrown([&] { null.WriteBytes(0, "", false); })}),
            (std::vector<ZnStreamError>{ZnStreamOk, ZnStreamWriteError, ZnStreamWriteError, ZnStreamSeekError,
                                        ZnStreamOk}));
  EXPECT_EQ(one, 'a');
}

TEST(ZnMemoryStreamTest, SetStatusSilencesWritesAndReadsRunToTheCapacity) {
  ZnMemoryStream stream;
  stream << 5;
  stream.SetStatus(ZnStreamWriteError);
  // Writes nothing; the read that follows gets four written bytes and four zeros.
  EXPECT_EQ((std::vector<ZnStreamError>{stream.WriteBytes(4, "abcd", false), stream.Flush(), stream.Seek(-4)}),
            (std::vector<ZnStreamError>(3, ZnStreamWriteError)));
  long long both = -1;
  stream >> both;
  EXPECT_TRUE(both == 5 && stream.Status() == ZnStreamOk);
  std::string rest(2048 - 8, '\0');
  EXPECT_EQ(Thrown([&] { stream.ReadBytes(static_cast<unsigned int>(rest.size()), &rest[0], false); }), ZnStreamOk);
  EXPECT_EQ(Thrown([&] { stream >> both; }), ZnStreamReadError);
}

TEST(ZnMemoryStreamTest, CopiesShareTheBlockAndReleaseItOnce) {
  auto *original = new ZnMemoryStream;
  *original << 1;
  ZnMemoryStream copy(*original), assigned;
  assigned << 9;  // a block of its own, released by the assignment
  assigned = *original;
  *original << 2;
  int length = 0;
  EXPECT_EQ(copy.GetBuffer(length), original->GetBuffer(length));
  delete original;
  // The copies still own the shared block; one grows away from it.
  std::string const big(3000, 'g');
  copy.WriteBytes(3000, big.data(), false);
  // The copy took the position of the moment, and sees what came after.
  assigned.Seek(4);
  assigned = assigned;
  EXPECT_EQ(Contents(assigned), std::string("\1\0\0\0\2\0\0\0", 8));
}

}  // namespace
