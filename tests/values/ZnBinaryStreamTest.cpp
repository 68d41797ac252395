#include <znutil/values/ZnBinaryStream.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/values/ZnBinary.h>

#include "StreamTestSupport.h"

namespace {

using znutil_test::Bytes;
using znutil_test::ExpectReads;
using znutil_test::Text;

Bytes AllBytes(ZnBinaryStream const &stream) {
  Bytes bytes(stream.Size());
  stream.CopyBytes(bytes.data());
  return bytes;
}

Bytes Counting(std::size_t count) {
  Bytes bytes(count);
  for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<unsigned char>(i * 7);
  return bytes;
}

// A stream holding the bytes of a stored string: the length, then `text`.
void AppendStoredString(ZnBinaryStream &stream, int length, std::string const &text) {
  stream << length;
  stream.AppendBytes(reinterpret_cast<unsigned char const *>(text.data()), static_cast<ZnULong>(text.size()));
}

TEST(ZnBinaryStreamTest, AppendsAndReadsAcrossChunksUpToTheLastChunksCapacity) {
  Bytes const bytes = Counting(700);
  ZnBinaryStream stream;
  stream.AppendBytes(bytes.data(), 300);
  for (std::size_t i = 300; i < 700; ++i) EXPECT_TRUE(stream.AppendByte(bytes[i]));
  EXPECT_EQ(AllBytes(stream), bytes);
  Bytes read(800, 0xAA);
  // 700 written, but the last chunk gives all 256 of its bytes: 768 in all;
  // then nothing, also when asked again.
  EXPECT_EQ((std::vector<ZnULong>{stream.ReadBytes(read.data(), 1), stream.ReadBytes(read.data() + 1, 600),
                                  stream.ReadBytes(read.data() + 601, 199)}),
            (std::vector<ZnULong>{1, 600, 167}));
  Bytes expected = bytes;
  expected.resize(768, 0);
  expected.resize(800, 0xAA);
  EXPECT_EQ(read, expected);
  EXPECT_EQ(stream.ReadBytes(read.data(), 10) + stream.ReadBytes(read.data(), 10), 0u);
  EXPECT_EQ(stream.Size(), 700u);  // reading does not consume
}

TEST(ZnBinaryStreamTest, FullAndEmptyChunks) {
  // A chunk filled exactly has no successor until the next append.
  ZnBinaryStream full;
  full.AppendBytes(Counting(256).data(), 256);
  Bytes read(300);
  EXPECT_EQ(full.ReadBytes(read.data(), 300), 256u);
  full.AppendByte(99);
  EXPECT_EQ(full.ReadBytes(read.data(), 1), 1u);
  EXPECT_EQ(read[0], 99);

  ZnBinaryStream never;
  EXPECT_EQ(never.ReadBytes(read.data(), 1), 0u);
  ZnBinaryStream fromEmpty{ZnBinary()};
  EXPECT_EQ(fromEmpty.Size(), 0u);
  EXPECT_EQ(fromEmpty.ReadBytes(read.data(), 1), 1u);  // the first chunk exists
  EXPECT_EQ(read[0], 0);
}

TEST(ZnBinaryStreamTest, ScalarsAndStringsRoundTripLeastSignificantByteFirst) {
  ZnBinaryStream stream;
  stream << -5 << 4000000000u << -6L << 0xFFFFFFFFUL << 1.5f << -2.25 << ZnString("text") << ZnString();
  EXPECT_EQ(AllBytes(stream), (Bytes{0xFB, 0xFF, 0xFF, 0xFF, 0x00, 0x28, 0x6B, 0xEE, 0xFA, 0xFF, 0xFF, 0xFF,
                                     0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0xC0, 0x3F, 0, 0, 0, 0, 0, 0, 0x02, 0xC0,
                                     4, 0, 0, 0, 't', 'e', 'x', 't', 0, 0, 0, 0}));
  ExpectReads(stream, -5, 4000000000u, -6L, 0xFFFFFFFFUL, 1.5f, -2.25, ZnString("text"), ZnString());
}

TEST(ZnBinaryStreamTest, StringExtractionEndsAtZeroAndCopesWithAnyLength) {
  std::string const longText(5000, 'q');  // longer than a staging piece of 512
  ZnBinaryStream stream;
  AppendStoredString(stream, 5, std::string("ab\0cd", 5));
  stream << 77 << ZnString(longText.c_str()) << -3 << 12;
  AppendStoredString(stream, 0x7FFFFFFF, "short");  // reads what is there and stops
  ExpectReads(stream, ZnString("ab"), 77, ZnString(longText.c_str()));
  ZnString text("old");
  stream >> text;  // a negative length reads nothing
  EXPECT_EQ(Text(text), "");
  ExpectReads(stream, 12, ZnString("short"));
}

TEST(ZnBinaryStreamTest, CopiesShareChunksAndAreReleasedOnce) {
  auto *original = new ZnBinaryStream;
  original->AppendBytes(Counting(300).data(), 300);
  ZnBinaryStream copy(*original), assigned;
  assigned.AppendByte(1);
  assigned = copy;
  original->AppendByte(42);  // into the shared last chunk
  EXPECT_EQ(copy.Size(), 301u);
  delete original;
  // Both remaining copies still read the shared chunks, and each extends
  // the chain; the second of them to go releases it.
  EXPECT_EQ(AllBytes(assigned).back(), 42);
  copy.AppendBytes(Counting(500).data(), 500);
  assigned.AppendBytes(Counting(500).data(), 500);
  EXPECT_EQ(copy.Size(), 1301u);
  assigned = assigned;
  EXPECT_EQ(assigned.Size(), 1301u);
}

}  // namespace
