#include <znutil/values/ZnBinaryStream.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/values/ZnBinary.h>

namespace {

std::vector<unsigned char> AllBytes(ZnBinaryStream const &stream) {
  std::vector<unsigned char> bytes(stream.Size());
  stream.CopyBytes(bytes.data());
  return bytes;
}

std::vector<unsigned char> Counting(std::size_t count) {
  std::vector<unsigned char> bytes(count);
  for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<unsigned char>(i * 7);
  return bytes;
}

// A stream holding the bytes of a stored string: the length, then `text`.
void AppendStoredString(ZnBinaryStream &stream, int length, std::string const &text) {
  stream << length;
  stream.AppendBytes(reinterpret_cast<unsigned char const *>(text.data()), static_cast<ZnULong>(text.size()));
}

std::string Text(ZnString const &text) { return static_cast<char const *>(text); }

TEST(ZnBinaryStreamTest, AppendsAcrossChunksAndReadsBackInOrder) {
  std::vector<unsigned char> const bytes = Counting(1000);
  ZnBinaryStream stream;
  stream.AppendBytes(bytes.data(), 300);
  for (std::size_t i = 300; i < 700; ++i) EXPECT_TRUE(stream.AppendByte(bytes[i]));
  stream.AppendBytes(bytes.data() + 700, 300);
  EXPECT_EQ(stream.Size(), 1000u);
  EXPECT_EQ(AllBytes(stream), bytes);

  std::vector<unsigned char> read(1000);
  EXPECT_EQ(stream.ReadBytes(read.data(), 1), 1u);
  EXPECT_EQ(stream.ReadBytes(read.data() + 1, 600), 600u);
  EXPECT_EQ(stream.ReadBytes(read.data() + 601, 399), 399u);
  EXPECT_EQ(read, bytes);
  EXPECT_EQ(stream.Size(), 1000u);  // reading does not consume
}

TEST(ZnBinaryStreamTest, ReadsRunToTheChunkCapacityThenStop) {
  ZnBinaryStream stream;
  stream.AppendBytes(Counting(300).data(), 300);
  std::vector<unsigned char> read(600, 0xAA);
  // 300 written, but the last chunk gives all 256 of its bytes: 512 read.
  EXPECT_EQ(stream.ReadBytes(read.data(), 600), 512u);
  EXPECT_EQ(read[299], Counting(300)[299]);
  EXPECT_EQ(read[300], 0);
  EXPECT_EQ(read[512], 0xAA);
  EXPECT_EQ(stream.ReadBytes(read.data(), 10), 0u);
  EXPECT_EQ(stream.ReadBytes(read.data(), 10), 0u);
}

TEST(ZnBinaryStreamTest, ExactlyFullChunkHasNoSuccessorUntilTheNextAppend) {
  ZnBinaryStream stream;
  stream.AppendBytes(Counting(256).data(), 256);
  std::vector<unsigned char> read(300);
  EXPECT_EQ(stream.ReadBytes(read.data(), 300), 256u);
  stream.AppendByte(99);
  EXPECT_EQ(stream.Size(), 257u);
  EXPECT_EQ(stream.ReadBytes(read.data(), 1), 1u);
  EXPECT_EQ(read[0], 99);
}

TEST(ZnBinaryStreamTest, EmptyStreamReadsNothing) {
  ZnBinaryStream never;
  unsigned char byte = 5;
  EXPECT_EQ(never.ReadBytes(&byte, 1), 0u);
  EXPECT_EQ(never.Size(), 0u);
  ZnBinaryStream fromEmpty{ZnBinary()};
  EXPECT_EQ(fromEmpty.Size(), 0u);
  EXPECT_EQ(fromEmpty.ReadBytes(&byte, 1), 1u);  // the first chunk exists
  EXPECT_EQ(byte, 0);
}

TEST(ZnBinaryStreamTest, ScalarsAndStringsRoundTrip) {
  ZnBinaryStream stream;
  stream << -5 << 4000000000u << -6L << 0xFFFFFFFFUL << 1.5f << -2.25 << ZnString("text") << ZnString();
  EXPECT_EQ(stream.Size(), 4u * 5 + 8 + 8 + 4);
  std::vector<unsigned char> const bytes = AllBytes(stream);
  EXPECT_EQ(std::vector<unsigned char>(bytes.begin(), bytes.begin() + 4), (std::vector<unsigned char>{0xFB, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(std::vector<unsigned char>(bytes.begin() + 28, bytes.begin() + 36),
            (std::vector<unsigned char>{4, 0, 0, 0, 't', 'e', 'x', 't'}));
  int i;
  unsigned int u;
  long l;
  unsigned long ul;
  float f;
  double d;
  ZnString s, empty("x");
  stream >> i >> u >> l >> ul >> f >> d >> s >> empty;
  EXPECT_EQ(i, -5);
  EXPECT_EQ(u, 4000000000u);
  EXPECT_EQ(l, -6L);
  EXPECT_EQ(ul, 0xFFFFFFFFUL);
  EXPECT_EQ(f, 1.5f);
  EXPECT_EQ(d, -2.25);
  EXPECT_EQ(Text(s), "text");
  EXPECT_EQ(Text(empty), "");
}

TEST(ZnBinaryStreamTest, StringExtractionEndsAtZeroAndCopesWithAnyLength) {
  ZnBinaryStream zero;
  AppendStoredString(zero, 5, std::string("ab\0cd", 5));
  zero << 77;
  ZnString text;
  int after = 0;
  zero >> text >> after;
  EXPECT_EQ(Text(text), "ab");
  EXPECT_EQ(after, 77);

  // Lengths the staging buffer of the design cannot hold.
  std::string const longText(5000, 'q');
  ZnBinaryStream big;
  big << ZnString(longText.c_str()) << 12;
  big >> text >> after;
  EXPECT_EQ(Text(text), longText);
  EXPECT_EQ(after, 12);

  // A length beyond what was written reads what is there and stops.
  ZnBinaryStream lying;
  AppendStoredString(lying, 0x7FFFFFFF, "short");
  lying >> text;
  EXPECT_EQ(Text(text), "short");

  ZnBinaryStream negative;
  AppendStoredString(negative, -3, "abc");
  negative >> text;
  EXPECT_EQ(Text(text), "");
}

TEST(ZnBinaryStreamTest, CopiesShareChunksAndAreReleasedOnce) {
  auto *original = new ZnBinaryStream;
  original->AppendBytes(Counting(300).data(), 300);
  ZnBinaryStream copy(*original);
  ZnBinaryStream assigned;
  assigned.AppendByte(1);
  assigned = copy;
  original->AppendByte(42);  // into the shared last chunk
  EXPECT_EQ(copy.Size(), 301u);
  delete original;
  // Both remaining copies still read the shared chunks; the second of
  // them to go releases them (a double release would fail under ASan).
  EXPECT_EQ(AllBytes(assigned).back(), 42);
  copy.AppendBytes(Counting(500).data(), 500);
  assigned.AppendBytes(Counting(500).data(), 500);
  EXPECT_EQ(copy.Size(), 1301u);
  assigned = assigned;
  EXPECT_EQ(assigned.Size(), 1301u);
}

}  // namespace
