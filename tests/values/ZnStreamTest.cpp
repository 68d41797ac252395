#include <znutil/values/ZnStream.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/containers/ZnUuid.h>
#include <znutil/values/ZnFileStream.h>
#include <znutil/values/ZnMemoryStream.h>
#include <znutil/values/ZnStreamException.h>

#include "StreamTestSupport.h"

namespace {

using znutil_test::Bytes;
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
    {
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

// Exposes the protected byte order flag of the stream family.
struct ByteOrder : ZnMemoryStream {
  static void SetLittleEndian(bool little) { bLittleEndian = little; }
};

// Records each transfer as (size, swap) and moves no bytes.
class RecordingStream : public ZnStream {
 public:
  ZnStreamError ReadBytes(unsigned int size, void *, bool swap) override { return Record(size, swap); }
  ZnStreamError WriteBytes(unsigned int size, void const *, bool swap) override { return Record(size, swap); }
  ZnStreamError Flush() override { return ZnStreamOk; }
  ZnStreamError Seek(int) override { return ZnStreamOk; }

  std::vector<std::pair<unsigned int, bool>> transfers;

 private:
  ZnStreamError Record(unsigned int size, bool swap) {
    transfers.emplace_back(size, swap);
    return ZnStreamOk;
  }
};

std::string Text(ZnString const &text) { return static_cast<char const *>(text); }

// 01020304-0506-0708-090a-0b0c0d0e0f10 in its fields.
ZnUuid CountingUuid() {
  ZnUuid id(NULL_UUID);
  id.udwData1 = 0x01020304;
  id.wData2 = 0x0506;
  id.wData3 = 0x0708;
  for (int i = 0; i < 8; ++i) id.abData4[i] = static_cast<BYTE>(9 + i);
  return id;
}

ZnString Chars(std::string const &text) { return ZnString(text.c_str()); }

Bytes LengthThen(std::int32_t length, std::string const &text) {
  Bytes bytes;
  for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<std::uint8_t>(static_cast<std::uint32_t>(length) >> (8 * i)));
  for (char c : text) bytes.push_back(static_cast<std::uint8_t>(c));
  return bytes;
}

template <typename Kind>
class WireFormTest : public ::testing::Test {};

using StreamKinds = ::testing::Types<MemoryKind, FileKind<true>, FileKind<false>>;
TYPED_TEST_SUITE(WireFormTest, StreamKinds);

TYPED_TEST(WireFormTest, ScalarsAreLittleEndianWithNoTagOrPadding) {
  Bytes const golden = {
      0x01,                                            // bool true
      0x00,                                            // bool false
      0x41,                                            // char 'A'
      0xFE,                                            // unsigned char
      0xFE, 0xFF,                                      // short -2
      0x34, 0x12,                                      // unsigned short 0x1234
      0xFE, 0xFF, 0xFF, 0xFF,                          // int -2
      0x78, 0x56, 0x34, 0x12,                          // unsigned int 0x12345678
      0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01,  // long long
      0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,  // unsigned long long
      0x00, 0x00, 0x80, 0x3F,                          // float 1.0
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x04, 0xC0,  // double -2.5
  };
  Bytes const written = TypeParam::Write([](ZnStream &out) {
    out << true << false << 'A' << static_cast<unsigned char>(0xFE) << static_cast<short>(-2)
        << static_cast<unsigned short>(0x1234) << -2 << 0x12345678u << 0x0102030405060708LL << 0xFFFFFFFFFFFFFFFEULL
        << 1.0f << -2.5;
  });
  EXPECT_EQ(written, golden);

  TypeParam::Read(golden, [](ZnStream &in) {
    bool t = false, f = true;
    char c = 0;
    unsigned char uc = 0;
    short s = 0;
    unsigned short us = 0;
    int i = 0;
    unsigned int u = 0;
    long long ll = 0;
    unsigned long long ull = 0;
    float fl = 0;
    double d = 0;
    in >> t >> f >> c >> uc >> s >> us >> i >> u >> ll >> ull >> fl >> d;
    EXPECT_TRUE(t);
    EXPECT_FALSE(f);
    EXPECT_EQ(c, 'A');
    EXPECT_EQ(uc, 0xFE);
    EXPECT_EQ(s, -2);
    EXPECT_EQ(us, 0x1234);
    EXPECT_EQ(i, -2);
    EXPECT_EQ(u, 0x12345678u);
    EXPECT_EQ(ll, 0x0102030405060708LL);
    EXPECT_EQ(ull, 0xFFFFFFFFFFFFFFFEULL);
    EXPECT_EQ(fl, 1.0f);
    EXPECT_EQ(d, -2.5);
  });
}

TYPED_TEST(WireFormTest, AnyNonZeroByteReadsAsTrue) {
  TypeParam::Read(Bytes{0x02, 0xFF, 0x00}, [](ZnStream &in) {
    bool a = false, b = false, c = true;
    in >> a >> b >> c;
    EXPECT_TRUE(a);
    EXPECT_TRUE(b);
    EXPECT_FALSE(c);
  });
}

TYPED_TEST(WireFormTest, StringsAreALengthAndCharactersWithoutTerminator) {
  std::string const thousand(1000, 'k');
  Bytes const written = TypeParam::Write([&](ZnStream &out) { out << ZnString("hello") << ZnString() << Chars(thousand); });
  Bytes golden = LengthThen(5, "hello");
  Bytes const empty = LengthThen(0, ""), big = LengthThen(1000, thousand);
  golden.insert(golden.end(), empty.begin(), empty.end());
  golden.insert(golden.end(), big.begin(), big.end());
  EXPECT_EQ(written, golden);

  TypeParam::Read(golden, [&](ZnStream &in) {
    ZnString hello, none("old"), k;
    in >> hello >> none >> k;  // the long one in pieces of 512 and 488
    EXPECT_EQ(Text(hello), "hello");
    EXPECT_EQ(Text(none), "");
    EXPECT_EQ(Text(k), thousand);
  });
}

TYPED_TEST(WireFormTest, ZeroByteDropsTheRestOfItsPieceAndNegativeLengthReadsNothing) {
  std::string stored(10, 'a');
  stored += '\0';
  stored += std::string(501, 'b');  // the first piece of 512 ends here
  stored += std::string(88, 'c');
  Bytes bytes = LengthThen(600, stored);
  Bytes const negative = LengthThen(-1, "");
  bytes.insert(bytes.end(), negative.begin(), negative.end());
  bytes.insert(bytes.end(), {7, 0, 0, 0});
  TypeParam::Read(bytes, [](ZnStream &in) {
    ZnString text, nothing("old");
    int after = 0;
    in >> text >> nothing >> after;
    EXPECT_EQ(Text(text), std::string(10, 'a') + std::string(88, 'c'));
    EXPECT_EQ(Text(nothing), "");
    EXPECT_EQ(after, 7);
  });
}

TYPED_TEST(WireFormTest, UuidIsThreeLittleEndianFieldsThenEightBytes) {
  Bytes const golden = {4, 3, 2, 1, 6, 5, 8, 7, 9, 10, 11, 12, 13, 14, 15, 16};
  EXPECT_EQ(TypeParam::Write([](ZnStream &out) { out << CountingUuid(); }), golden);
  TypeParam::Read(golden, [](ZnStream &in) {
    ZnUuid id;
    in >> id;
    EXPECT_TRUE(id == CountingUuid());
  });
}

TYPED_TEST(WireFormTest, ReadingPastTheEndThrowsAReadError) {
  TypeParam::Read(Bytes{1, 2}, [](ZnStream &in) {
    int value = 0;
    try {
      in >> value;
      ADD_FAILURE() << "no exception";
    } catch (ZnStreamException const &e) {
      EXPECT_EQ(e.eError, ZnStreamReadError);
    }
  });
}

TEST(ZnStreamTest, SizeOfGivesTheWireWidths) {
  EXPECT_EQ(ZnStream::SizeOf(true), 1);
  EXPECT_EQ(ZnStream::SizeOf('c'), 1);
  EXPECT_EQ(ZnStream::SizeOf(static_cast<short>(1)), 2);
  EXPECT_EQ(ZnStream::SizeOf(1), 4);
  EXPECT_EQ(ZnStream::SizeOf(1LL), 8);
  EXPECT_EQ(ZnStream::SizeOf(1.0f), 4);
  EXPECT_EQ(ZnStream::SizeOf(1.0), 8);
  EXPECT_EQ(ZnStream::SizeOf(ZnString("hello")), 9);
  EXPECT_EQ(ZnStream::SizeOf(ZnString()), 4);
  EXPECT_EQ(ZnStream::SizeOf(CountingUuid()), 16);
}

TEST(ZnStreamTest, UuidMovesInElevenTransfers) {
  std::vector<std::pair<unsigned int, bool>> expected = {{4, true}, {2, true}, {2, true}};
  expected.insert(expected.end(), 8, {1, false});
  RecordingStream out;
  out << CountingUuid();
  EXPECT_EQ(out.transfers, expected);
  RecordingStream in;
  ZnUuid id;
  in >> id;
  EXPECT_EQ(in.transfers, expected);
}

TEST(ZnStreamTest, FileAndMemoryStreamsReadWhatTheOtherWrote) {
  auto const write = [](ZnStream &out) { out << 3 << ZnString("three") << 3.5 << static_cast<short>(-3); };
  auto const read = [](ZnStream &in) {
    int i = 0;
    ZnString s;
    double d = 0;
    short h = 0;
    in >> i >> s >> d >> h;
    EXPECT_EQ(i, 3);
    EXPECT_EQ(Text(s), "three");
    EXPECT_EQ(d, 3.5);
    EXPECT_EQ(h, -3);
  };
  MemoryKind::Read(FileKind<true>::Write(write), read);
  FileKind<true>::Read(MemoryKind::Write(write), read);
  FileKind<false>::Read(MemoryKind::Write(write), read);
}

TEST(ZnStreamTest, OnlyMemoryStreamsHonourTheSwapFlag) {
  ByteOrder::SetLittleEndian(false);
  Bytes const memory = MemoryKind::Write([](ZnStream &out) { out << 0x01020304 << ZnString("ab") << CountingUuid(); });
  Bytes const file = FileKind<true>::Write([](ZnStream &out) { out << 0x01020304; });
  ByteOrder::SetLittleEndian(true);
  // Scalars, lengths and the identifier's fields reverse; characters and
  // the identifier's last 8 bytes are written with no swap.
  EXPECT_EQ(memory, (Bytes{1, 2, 3, 4, 0, 0, 0, 2, 'a', 'b', 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
  EXPECT_EQ(file, (Bytes{4, 3, 2, 1}));
}

}  // namespace
