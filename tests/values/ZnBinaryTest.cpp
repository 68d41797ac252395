#include <znutil/values/ZnBinary.h>

#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/values/ZnBinaryStream.h>

#include "../memory/BlockHeader.h"

namespace {

std::vector<unsigned char> BytesOf(ZnBinary const &value) {
  unsigned char const *data = value;
  return std::vector<unsigned char>(data, data + value.Size());
}

ZnBinary Sequence(ZnULong count, unsigned char first = 0) {
  std::vector<unsigned char> bytes(count);
  for (ZnULong i = 0; i < count; ++i) bytes[i] = static_cast<unsigned char>(first + i);
  ZnBinary value;
  value.Store(bytes.data(), count);
  return value;
}

bool IsInline(ZnBinary const &value) {
  auto const *data = static_cast<unsigned char *>(value);
  auto const *object = reinterpret_cast<unsigned char const *>(&value);
  return data >= object && data < object + sizeof value;
}

std::string Text(ZnString const &text) { return static_cast<char const *>(text); }

TEST(ZnBinaryTest, ScalarsAreStoredLeastSignificantByteFirst) {
  using Bytes = std::vector<unsigned char>;
  EXPECT_EQ(BytesOf(ZnBinary(0x01020304)), (Bytes{4, 3, 2, 1}));
  EXPECT_EQ(BytesOf(ZnBinary(0xFFFFFFFEu)), (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(BytesOf(ZnBinary(-2L)), (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(BytesOf(ZnBinary(0x8000000000000001UL)), (Bytes{1, 0, 0, 0}));
  EXPECT_EQ(BytesOf(ZnBinary(1.0f)), (Bytes{0, 0, 0x80, 0x3F}));
  EXPECT_EQ(BytesOf(ZnBinary(-2.5)), (Bytes{0, 0, 0, 0, 0, 0, 4, 0xC0}));
  EXPECT_EQ(BytesOf(ZnBinary(ZnString("abc"))), (Bytes{'a', 'b', 'c'}));
  EXPECT_EQ(ZnBinary(ZnString()).Size(), 0u);
}

TEST(ZnBinaryTest, ConversionsDecodeTheStorage) {
  EXPECT_EQ(static_cast<int>(ZnBinary(-7)), -7);
  EXPECT_EQ(static_cast<unsigned int>(ZnBinary(4000000000u)), 4000000000u);
  // long is the 32-bit long of the design: sign-extended and zero-extended.
  EXPECT_EQ(static_cast<long>(ZnBinary(-5L)), -5L);
  EXPECT_EQ(static_cast<unsigned long>(ZnBinary(0xFFFFFFFFUL)), 0xFFFFFFFFUL);
  EXPECT_EQ(static_cast<float>(ZnBinary(1.25f)), 1.25f);
  EXPECT_EQ(static_cast<double>(ZnBinary(-3.5)), -3.5);
  ZnBinary text(ZnString("hello"));
  EXPECT_EQ(Text(static_cast<ZnString>(text)), "hello");
  // A fresh value holds zeros; a shorter store leaves earlier bytes behind.
  EXPECT_EQ(static_cast<int>(ZnBinary()), 0);
  ZnBinary value(0x11223344);
  value.Store(ZnString("A"));
  EXPECT_EQ(static_cast<int>(value), 0x11223341);
}

TEST(ZnBinaryTest, TextConversionStopsAtZeroAndStaysInsideTheStorage) {
  unsigned char const bytes[] = {'a', 'b', 0, 'c'};
  ZnBinary value;
  value.Store(bytes, 4);
  EXPECT_EQ(Text(static_cast<ZnString>(value)), "ab");
  // 64 inline bytes and a 100-byte block, neither with a zero byte.
  ZnBinary full = Sequence(64, 'A');
  EXPECT_EQ(Text(static_cast<ZnString>(full)).size(), 64u);
  ZnBinary block = Sequence(100, 1);
  EXPECT_EQ(Text(static_cast<ZnString>(block)).size(), 100u);
}

TEST(ZnBinaryTest, SixtyFourBytesStayInlineAndLongerValuesTakeExactBlocks) {
  ZnBinary small = Sequence(64);
  EXPECT_TRUE(IsInline(small));
  ZnBinary large = Sequence(65);
  EXPECT_FALSE(IsInline(large));
  // Blocks are of exactly the stored size: the allocator's size class
  // index of a block is the requested size / 4.
  EXPECT_EQ(znutil_test::SizeClassIndex(static_cast<unsigned char *>(large)), 65 >> 2);
  ZnBinary larger = Sequence(1000);
  EXPECT_EQ(znutil_test::SizeClassIndex(static_cast<unsigned char *>(larger)), 1000 >> 2);
  large.Store(1);
  EXPECT_TRUE(IsInline(large));
  EXPECT_EQ(BytesOf(Sequence(65)), BytesOf(ZnBinary(Sequence(65))));
}

TEST(ZnBinaryTest, CopiesAreDeep) {
  ZnBinary original = Sequence(100);
  ZnBinary copy(original);
  ZnBinary assigned;
  assigned = original;
  original.Store(5);
  EXPECT_EQ(BytesOf(copy), BytesOf(Sequence(100)));
  EXPECT_EQ(BytesOf(assigned), BytesOf(Sequence(100)));
  EXPECT_NE(static_cast<unsigned char *>(copy), static_cast<unsigned char *>(assigned));
}

TEST(ZnBinaryTest, SelfAssignmentEmptiesTheValue) {
  ZnBinary small(42);
  ZnBinary &alias = small;
  small = alias;
  EXPECT_EQ(small.Size(), 0u);
  EXPECT_TRUE(IsInline(small));
  ZnBinary large = Sequence(80);
  ZnBinary &largeAlias = large;
  large = largeAlias;
  EXPECT_EQ(large.Size(), 0u);
  EXPECT_FALSE(IsInline(large));  // a fresh block of the old length
  large.Store(ZnString("x"));
  EXPECT_EQ(large.Size(), 1u);
}

TEST(ZnBinaryTest, StoreFromItsOwnStorageIsSafe) {
  ZnBinary large = Sequence(100);
  large.Store(static_cast<unsigned char *>(large) + 10, 80);
  EXPECT_EQ(BytesOf(large), BytesOf(Sequence(80, 10)));
  large.Store(static_cast<unsigned char *>(large) + 20, 30);
  EXPECT_EQ(BytesOf(large), BytesOf(Sequence(30, 30)));
  EXPECT_TRUE(IsInline(large));
}

TEST(ZnBinaryTest, CompareAndEquality) {
  ZnBinary abc(ZnString("abc")), abd(ZnString("abd")), ab(ZnString("ab")), empty;
  EXPECT_EQ(abc.Compare(abd), -1);
  EXPECT_EQ(abd.Compare(abc), 1);
  EXPECT_EQ(ab.Compare(abc), -1);
  EXPECT_EQ(abc.Compare(ab), 1);
  EXPECT_EQ(empty.Compare(ZnBinary()), 0);
  EXPECT_EQ(abc.Compare(ZnBinary(ZnString("abc"))), 0);
  // Bytes compare unsigned.
  EXPECT_EQ(ZnBinary(0x80).Compare(ZnBinary(0x7F)), 1);
  EXPECT_EQ(abc == ZnBinary(ZnString("abc")), 1);
  EXPECT_EQ(abc == ab, 0);
  EXPECT_EQ(abc != ab, 1);
  EXPECT_EQ(empty != ZnBinary(), 0);
}

TEST(ZnBinaryTest, DumpWritesHexWithABreakAfterEveryNineteenthByte) {
  unsigned char const three[] = {1, 2, 255};
  ZnBinary value;
  value.Store(three, 3);
  EXPECT_EQ(Text(value.Dump(false)), "x01,x02,xff");
  EXPECT_EQ(Text(value.Dump(true)), "x01,x02,xff");
  EXPECT_EQ(Text(ZnBinary(10).Dump(false)), "x0a,x00,x00,x00");
  EXPECT_EQ(Text(ZnBinary().Dump(true)), "");
  EXPECT_EQ(Text(ZnBinary().Dump(false)), "");

  std::string const nineteen = Text(Sequence(19).Dump(true));
  EXPECT_EQ(nineteen.find('\r'), std::string::npos);
  EXPECT_EQ(nineteen.size(), 19u * 4 - 1);
  std::string const twenty = Text(Sequence(20).Dump(true));
  EXPECT_EQ(twenty.substr(18 * 4, 11), "x12,\r\nx13");
  std::string const many = Text(Sequence(39).Dump(true));
  EXPECT_EQ(many.find("\r\n"), 19u * 4);
  EXPECT_EQ(many.find("\r\n", 19 * 4 + 1), 38u * 4 + 2);
  EXPECT_EQ(Text(Sequence(39).Dump(false)).find('\r'), std::string::npos);
}

TEST(ZnBinaryTest, BuildsFromAllBytesOfAStream) {
  ZnBinaryStream stream;
  for (int i = 0; i < 600; ++i) stream.AppendByte(static_cast<unsigned char>(i));
  unsigned char skipped[10];
  stream.ReadBytes(skipped, 10);
  ZnBinary value(stream);
  ASSERT_EQ(value.Size(), 600u);
  for (int i = 0; i < 600; ++i) EXPECT_EQ(static_cast<unsigned char *>(value)[i], static_cast<unsigned char>(i));
}

}  // namespace
