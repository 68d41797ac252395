#include <znutil/values/ZnBinary.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/values/ZnBinaryStream.h>

#include "../memory/BlockHeader.h"
#include "StreamTestSupport.h"

namespace {

using znutil_test::Bytes;
using znutil_test::Text;

Bytes BytesOf(ZnBinary const &value) {
  unsigned char const *data = value;
  return Bytes(data, data + value.Size());
}

ZnBinary Sequence(ZnULong count, unsigned char first = 0) {
  Bytes bytes(count);
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

// Built from `value`, and stored over a longer value, the bytes are
// `bytes`, and they convert back to `value`.
template <typename T>
void ExpectStored(T value, Bytes const &bytes) {
  ZnBinary built(value), stored = Sequence(100);
  stored.Store(value);
  EXPECT_EQ(BytesOf(built), bytes);
  EXPECT_EQ(BytesOf(stored), bytes);
  EXPECT_EQ(static_cast<T>(built), value);
}

TEST(ZnBinaryTest, ValuesAreStoredLeastSignificantByteFirst) {
  ExpectStored(0x01020304, Bytes{4, 3, 2, 1});
  ExpectStored(0xFFFFFFFEu, Bytes{0xFE, 0xFF, 0xFF, 0xFF});
  // long is the 32-bit long of stored values: sign- or zero-extended back.
  ExpectStored(-2L, Bytes{0xFE, 0xFF, 0xFF, 0xFF});
  ExpectStored(0xFFFFFFFFUL, Bytes{0xFF, 0xFF, 0xFF, 0xFF});
  EXPECT_EQ(BytesOf(ZnBinary(0x8000000000000001UL)), (Bytes{1, 0, 0, 0}));
  ExpectStored(1.0f, Bytes{0, 0, 0x80, 0x3F});
  ExpectStored(-2.5, Bytes{0, 0, 0, 0, 0, 0, 0x04, 0xC0});
  ExpectStored(ZnString("abc"), Bytes{'a', 'b', 'c'});
  ExpectStored(ZnString(), Bytes{});
}

TEST(ZnBinaryTest, ConversionsReadTheStorageWhateverTheLength) {
  // A fresh value holds zeros; a shorter store leaves earlier bytes behind.
  EXPECT_EQ(static_cast<int>(ZnBinary()), 0);
  ZnBinary value(0x11223344);
  value.Store(ZnString("A"));
  EXPECT_EQ(static_cast<int>(value), 0x11223341);
  // Text stops at a zero byte, or at the end of the storage without one.
  unsigned char const bytes[] = {'a', 'b', 0, 'c'};
  value.Store(bytes, 4);
  EXPECT_EQ(Text(static_cast<ZnString>(value)), "ab");
  EXPECT_EQ(Text(static_cast<ZnString>(Sequence(64, 'A'))).size(), 64u);
  EXPECT_EQ(Text(static_cast<ZnString>(Sequence(100, 1))).size(), 100u);
}

TEST(ZnBinaryTest, SixtyFourBytesStayInlineAndLongerValuesTakeExactBlocks) {
  ZnBinary const sixtyFour = Sequence(64);
  ZnBinary assigned, large = Sequence(65), larger = Sequence(1000);
  assigned = sixtyFour;
  ZnBinaryStream stream(sixtyFour);
  ZnBinary const streamed(stream);
  EXPECT_TRUE(IsInline(sixtyFour) && IsInline(assigned) && IsInline(streamed)) << "also assigned or from a stream";
  EXPECT_FALSE(IsInline(large));
  // The allocator's size class index of a block is the requested size / 4.
  EXPECT_EQ(znutil_test::SizeClassIndex(static_cast<unsigned char *>(large)), 65 >> 2);
  EXPECT_EQ(znutil_test::SizeClassIndex(static_cast<unsigned char *>(larger)), 1000 >> 2);
  large.Store(1);
  EXPECT_TRUE(IsInline(large));
}

TEST(ZnBinaryTest, CopiesAreDeepSelfAssignmentEmptiesAndSelfStoreWorks) {
  ZnBinary original = Sequence(100), copy(original), assigned, large = Sequence(100);
  assigned = original;
  original.Store(5);
  EXPECT_EQ(BytesOf(copy), BytesOf(Sequence(100)));
  EXPECT_EQ(BytesOf(assigned), BytesOf(Sequence(100)));
  EXPECT_NE(static_cast<unsigned char *>(copy), static_cast<unsigned char *>(assigned));

  ZnBinary &alias = original, &largeAlias = copy;
  original = alias;
  EXPECT_TRUE(original.Size() == 0 && IsInline(original));
  copy = largeAlias;
  EXPECT_TRUE(copy.Size() == 0 && !IsInline(copy));  // a fresh block of the old length
  copy.Store(ZnString("x"));
  EXPECT_EQ(copy.Size(), 1u);

  large.Store(static_cast<unsigned char *>(large) + 10, 80);
  EXPECT_EQ(BytesOf(large), BytesOf(Sequence(80, 10)));
  large.Store(static_cast<unsigned char *>(large) + 20, 30);
  EXPECT_EQ(BytesOf(large), BytesOf(Sequence(30, 30)));
}

TEST(ZnBinaryTest, CompareIsUnsignedBytewiseThenShorterFirst) {
  struct Row {
    char const *left, *right;
    int compare;
  } const rows[] = {{"abc", "abd", -1}, {"abd", "abc", 1}, {"ab", "abc", -1}, {"abc", "ab", 1},
                    {"abc", "abc", 0},  {"", "", 0},       {"\x80", "\x7f", 1}};
  for (Row const &row : rows) {
    SCOPED_TRACE(std::string(row.left) + " vs " + row.right);
    ZnBinary const left{ZnString(row.left)}, right{ZnString(row.right)};
    EXPECT_EQ(left.Compare(right), row.compare);
    EXPECT_EQ(left == right, row.compare == 0);
    EXPECT_EQ(left != right, row.compare != 0);
  }
}

TEST(ZnBinaryTest, DumpWritesHexWithABreakAfterEveryNineteenthByte) {
  unsigned char const three[] = {1, 2, 255};
  ZnBinary value;
  value.Store(three, 3);
  EXPECT_EQ(Text(value.Dump(false)) + "|" + Text(value.Dump(true)), "x01,x02,xff|x01,x02,xff");
  EXPECT_EQ(Text(ZnBinary(10).Dump(false)), "x0a,x00,x00,x00");
  EXPECT_EQ(Text(ZnBinary().Dump(true)) + Text(ZnBinary().Dump(false)), "");
  std::string const nineteen = Text(Sequence(19).Dump(true));
  EXPECT_EQ(nineteen.size(), 19u * 4 - 1);  // no break behind the last byte
  EXPECT_EQ(Text(Sequence(20).Dump(true)).substr(18 * 4, 11), "x12,\r\nx13");
  std::string const many = Text(Sequence(39).Dump(true));
  EXPECT_EQ(many.find("\r\n"), 19u * 4);
  EXPECT_EQ(many.find("\r\n", 19 * 4 + 1), 38u * 4 + 2);
  EXPECT_EQ(Text(Sequence(39).Dump(false)).find('\r'), std::string::npos);
}

TEST(ZnBinaryTest, BuildsFromAllBytesOfAStream) {
  ZnBinary const bytes = Sequence(600);
  ZnBinaryStream stream(bytes);
  unsigned char skipped[10];
  stream.ReadBytes(skipped, 10);  // the read cursor does not matter
  EXPECT_EQ(BytesOf(ZnBinary(stream)), BytesOf(bytes));
}

}  // namespace
