#include <znutil/values/ZnStream.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/containers/ZnUuid.h>
#include <znutil/values/ZnFileStream.h>
#include <znutil/values/ZnMemoryStream.h>

#include "StreamTestSupport.h"

namespace {

using znutil_test::Bytes;
using znutil_test::Text;
using znutil_test::Thrown;
using Body = std::function<void(ZnStream &)>;

// Each kind of stream writes bytes through `body` and reads given bytes.
struct MemoryKind {
  static Bytes Write(Body const &body) {
    ZnMemoryStream stream;
    body(stream);
    int length = 0;
    char const *block = stream.GetBuffer(length);
    return Bytes(block, block + length);
  }
  static void Read(Bytes bytes, Body const &body) {
    ZnMemoryStream stream(bytes.data(), static_cast<int>(bytes.size()));
    body(stream);
  }
};

template <bool kBuffered>
struct FileKind {
  static Bytes Write(Body const &body) {
    std::string const path = znutil_test::TempFile("wire");
    {  // closed before the bytes are read
      ZnFileStream stream(ZnString(path.c_str()), ZnFileWrite, kBuffered);
      body(stream);
    }
    return znutil_test::ReadWholeFile(path);
  }
  static void Read(Bytes const &bytes, Body const &body) {
    std::string const path = znutil_test::TempFile("wire");
    znutil_test::WriteWholeFile(path, bytes);
    ZnFileStream stream(ZnString(path.c_str()), ZnFileRead, kBuffered);
    body(stream);
  }
};

// What one kind of stream writes, another kind reads back.
template <typename W, typename R>
struct Route { using Writer = W; using Reader = R; };

// Exposes the protected byte order flag of the stream family.
struct ByteOrder : ZnMemoryStream {
  static void SetLittleEndian(bool little) { bLittleEndian = little; }
};

// 01020304-0506-0708-090a-0b0c0d0e0f10 in its fields.
ZnUuid CountingUuid() {
  ZnUuid id(NULL_UUID);
  id.udwData1 = 0x01020304;
  id.wData2 = 0x0506;
  id.wData3 = 0x0708;
  for (int i = 0; i < 8; ++i) id.abData4[i] = static_cast<BYTE>(9 + i);
  return id;
}

Bytes LengthThen(std::int32_t length, std::string const &text) {
  Bytes bytes;
  for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<std::uint8_t>(static_cast<std::uint32_t>(length) >> (8 * i)));
  bytes.insert(bytes.end(), text.begin(), text.end());
  return bytes;
}

Bytes Join(std::initializer_list<Bytes> runs) {
  Bytes joined;
  for (Bytes const &run : runs) joined.insert(joined.end(), run.begin(), run.end());
  return joined;
}

// Writes `values` with the route's writer, expects exactly `golden`, and
// reads the written bytes back with the route's reader.
template <typename Via, typename... T>
void ExpectWireForm(Bytes const &golden, T const &...values) {
  Bytes const written = Via::Writer::Write([&](ZnStream &out) { (out << ... << values); });
  EXPECT_EQ(written, golden);
  Via::Reader::Read(written, [&](ZnStream &in) { znutil_test::ExpectReads(in, values...); });
}

template <typename Via>
class WireFormTest : public ::testing::Test {};

using Routes = ::testing::Types<Route<MemoryKind, FileKind<true>>, Route<FileKind<true>, FileKind<false>>,
                                Route<FileKind<false>, MemoryKind>>;
TYPED_TEST_SUITE(WireFormTest, Routes);

TYPED_TEST(WireFormTest, EveryTypeHasItsGoldenBytes) {
  ExpectWireForm<TypeParam>(Bytes{0x01, 0x00, 0x41, 0xFE}, true, false, 'A', static_cast<unsigned char>(0xFE));
  ExpectWireForm<TypeParam>(Bytes{0xFE, 0xFF, 0x34, 0x12}, static_cast<short>(-2), static_cast<unsigned short>(0x1234));
  ExpectWireForm<TypeParam>(Bytes{0xFE, 0xFF, 0xFF, 0xFF, 0x78, 0x56, 0x34, 0x12}, -2, 0x12345678u);
  ExpectWireForm<TypeParam>(Bytes{8, 7, 6, 5, 4, 3, 2, 1, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF},
                            0x0102030405060708LL, 0xFFFFFFFFFFFFFFFEULL);
  ExpectWireForm<TypeParam>(Bytes{0, 0, 0x80, 0x3F, 0, 0, 0, 0, 0, 0, 0x04, 0xC0}, 1.0f, -2.5);
  std::string const thousand(1000, 'k');  // read in pieces of 512 and 488
  ExpectWireForm<TypeParam>(Join({LengthThen(5, "hello"), LengthThen(0, ""), LengthThen(1000, thousand)}),
                            ZnString("hello"), ZnString(), ZnString(thousand.c_str()));
  ExpectWireForm<TypeParam>(Bytes{4, 3, 2, 1, 6, 5, 8, 7, 9, 10, 11, 12, 13, 14, 15, 16}, CountingUuid());
}

TYPED_TEST(WireFormTest, OddBytesReadAsStoredAndTheEndThrows) {
  std::string const stored = std::string(10, 'a') + '\0' + std::string(501, 'b')  // the first piece of 512
                             + std::string(88, 'c');
  Bytes const bytes = Join({{0x02, 0xFF, 0x00}, LengthThen(600, stored), LengthThen(-1, ""), {7, 0, 0, 0, 9, 9}});
  TypeParam::Reader::Read(bytes, [](ZnStream &in) {
    bool a = false, b = false, c = true;
    ZnString text, nothing("old");
    int after = 0;
    in >> a >> b >> c >> text >> nothing >> after;
    EXPECT_TRUE(a && b && !c);  // any non-zero byte is true
    // A zero byte drops the rest of its piece; a negative length reads nothing.
    EXPECT_EQ(Text(text), std::string(10, 'a') + std::string(88, 'c'));
    EXPECT_EQ(Text(nothing), "");
    EXPECT_EQ(after, 7);
    EXPECT_EQ(Thrown([&] { in >> after; }), ZnStreamReadError);
  });
}

TEST(ZnStreamTest, SizeOfGivesTheWireWidths) {
  std::vector<int> const sizes = {ZnStream::SizeOf(true), ZnStream::SizeOf('c'), ZnStream::SizeOf(short{1}),
                                  ZnStream::SizeOf(1), ZnStream::SizeOf(1LL), ZnStream::SizeOf(1.0f),
                                  ZnStream::SizeOf(1.0), ZnStream::SizeOf(ZnString("hello")),
                                  ZnStream::SizeOf(ZnString()), ZnStream::SizeOf(CountingUuid())};
  EXPECT_EQ(sizes, (std::vector<int>{1, 1, 2, 4, 8, 4, 8, 9, 4, 16}));
}

TEST(ZnStreamTest, OnlyMemoryStreamsHonourTheSwapFlag) {
  Bytes const uuid = {4, 3, 2, 1, 6, 5, 8, 7, 9, 10, 11, 12, 13, 14, 15, 16};
  ByteOrder::SetLittleEndian(false);
  // Scalars, lengths and the identifier's fields reverse; characters and
  // the identifier's last 8 bytes move with no swap.
  ExpectWireForm<Route<MemoryKind, MemoryKind>>(
      Bytes{1, 2, 3, 4, 0, 0, 0, 2, 'a', 'b', 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, 0x01020304,
      ZnString("ab"), CountingUuid());
  ExpectWireForm<Route<FileKind<true>, FileKind<false>>>(Join({{4, 3, 2, 1}, LengthThen(2, "ab"), uuid}), 0x01020304,
                                                         ZnString("ab"), CountingUuid());
  ByteOrder::SetLittleEndian(true);
}

}  // namespace
