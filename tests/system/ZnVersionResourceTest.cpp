#include <znutil/system/ZnVersionResource.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <znutil/system/ZnExeResources.h>

#include "ImageBuilder.h"

using namespace imagetest;

namespace {

// Offsets of the version words from the start of the fixed part.
constexpr std::size_t kFileMS = 8, kFileLS = 12, kProductMS = 16, kProductLS = 20;
// The fixed part of a block made by VersionInfo().
constexpr std::size_t kFixedOffset = 40;

std::vector<unsigned short> Key(std::u16string const &text) {
  std::vector<unsigned short> key(text.begin(), text.end());
  key.push_back(0);
  return key;
}

// The value of `key` as text, or "<null>"; the length in `*length`.
std::u16string Lookup(ZnVersionResource &version, std::u16string const &key, ZnULong *length) {
  unsigned short const *value = version.GetString(Key(key).data(), length);
  return value == nullptr ? u"<null>" : std::u16string(value, value + *length);
}

std::u16string Lookup(ZnVersionResource &version, std::u16string const &key) {
  ZnULong length;
  return Lookup(version, key, &length);
}

// A text entry of 16 bytes (a length that is 0 modulo 4) and one of 18.
VersionNode Even() { return Text(u"A", u"x"); }
VersionNode Odd() { return Text(u"A", u"xy"); }

TEST(ZnVersionResourceTest, ReadsAndWritesTheFixedVersions) {
  Bytes block = Serialize(TypicalVersionInfo());
  ZnVersionResource version(block.data());
  EXPECT_EQ(version.GetFileVersion(), "2.13.0.7");
  EXPECT_EQ(version.GetProductVersion(), "2.13.0.0");
  version.SetFileVersion("0.0.0.0");
  version.SetFileVersion(version.GetProductVersion());
  EXPECT_EQ(0x0002000Du, Dword(block, kFixedOffset + kFileMS));
  EXPECT_EQ(0u, Dword(block, kFixedOffset + kFileLS));
  version.SetFileVersion("2.13.0.7");
  EXPECT_EQ(0x0002000Du, Dword(block, kFixedOffset + kFileMS));
  EXPECT_EQ(7u, Dword(block, kFixedOffset + kFileLS));
  EXPECT_EQ(block, Serialize(TypicalVersionInfo()));
}

TEST(ZnVersionResourceTest, SetVersionReadsTokensAsStrtokAndAtoi) {
  struct Case {
    char const *text;
    std::uint32_t high, low;
  };
  Case const cases[] = {
      {"1.2", 0x00010002, 0},
      {"", 0, 0},
      {"1.x.3.4", 0x00010000, 0x00030004},  // atoi("x") is 0
      {"70000.1", 0x11700001, 0},           // 70000 keeps its low 16 bits
      {"1..3", 0x00010003, 0},              // strtok skips empty tokens
      {".5", 0x00050000, 0},
      {"1.2.3.4.5", 0x00010002, 0x00030004},
      {"-1.65536", 0xFFFF0000, 0},
      {" 7.8x.9", 0x00070008, 0x00090000},
  };
  for (Case const &c : cases) {
    Bytes block = Serialize(TypicalVersionInfo());
    ZnVersionResource version(block.data());
    version.SetFileVersion(c.text);
    EXPECT_EQ(c.high, Dword(block, kFixedOffset + kFileMS)) << c.text;
    EXPECT_EQ(c.low, Dword(block, kFixedOffset + kFileLS)) << c.text;
    EXPECT_EQ(0x0002000Du, Dword(block, kFixedOffset + kProductMS)) << c.text;
    version.SetProductVersion(c.text);
    EXPECT_EQ(c.high, Dword(block, kFixedOffset + kProductMS)) << c.text;
    EXPECT_EQ(c.low, Dword(block, kFixedOffset + kProductLS)) << c.text;
  }
}

TEST(ZnVersionResourceTest, GetStringIgnoresCaseAndCountsUnitsWithoutTerminator) {
  Bytes block = Serialize(TypicalVersionInfo());
  ZnVersionResource version(block.data());
  ZnULong length = 99;
  EXPECT_EQ(u"Acme Tools", Lookup(version, u"CompanyName", &length));
  EXPECT_EQ(10u, length);
  EXPECT_EQ(u"Acme Tools", Lookup(version, u"companyname"));
  EXPECT_EQ(u"Acme Tools", Lookup(version, u"COMPANYNAME"));
  EXPECT_EQ(u"Anvil", Lookup(version, u"productName", &length));
  EXPECT_EQ(5u, length);
  EXPECT_EQ(u"<null>", Lookup(version, u"CompanyNam", &length));
  EXPECT_EQ(0u, length);
  EXPECT_EQ(u"<null>", Lookup(version, u"LegalCopyright", &length));
  EXPECT_EQ(0u, length);
}

TEST(ZnVersionResourceTest, EntryWithoutValueGivesNullAndAllOnesLength) {
  Bytes block = Serialize(TypicalVersionInfo());
  ZnVersionResource version(block.data());
  ZnULong length = 0;
  EXPECT_EQ(nullptr, version.GetString(Key(u"Comments").data(), &length));
  EXPECT_EQ(0xFFFFFFFFu, length);
}

TEST(ZnVersionResourceTest, OnlyTheTwoEnglishTablesAreRead) {
  struct Case {
    std::u16string language;
    bool read;
  };
  Case const cases[] = {{u"040904b0", true}, {u"040904E4", true}, {u"040704b0", false}, {u"040904b1", false}};
  for (Case const &c : cases) {
    VersionNode const info =
        VersionInfo(0x00010002, 0x00030004, 0, 0, {StringFileInfo({Table(c.language, {Text(u"Key", u"value")})})});
    Bytes block = Serialize(info);
    ZnVersionResource version(block.data());
    EXPECT_EQ(c.read ? u"value" : u"<null>", Lookup(version, u"Key"));
    EXPECT_EQ(version.GetFileVersion(), "1.2.3.4");
  }
}

TEST(ZnVersionResourceTest, StepsByLengthPlusTwoAndMissesWhatLiesBehindOtherLengths) {
  VersionNode const english = Table(u"040904b0", {Text(u"Key", u"value")});
  VersionNode german = Table(u"040704b0", {Even()});
  ASSERT_EQ(0u, Serialize(german).size() % 4);
  VersionNode varFirst = VersionInfo(0, 0, 0, 0, {VarFileInfo(), StringFileInfo({english})});
  ASSERT_EQ(0u, Serialize(VarFileInfo()).size() % 4);
  struct Case {
    char const *what;
    VersionNode info;
    bool found;
  };
  std::vector<Case> const cases = {
      {"string table first", VersionInfo(0, 0, 0, 0, {StringFileInfo({english}), VarFileInfo()}), true},
      {"behind a child of length 0 mod 4", varFirst, false},
      {"behind a child of length 2 mod 4", VersionInfo(0, 0, 0, 0, {Odd(), StringFileInfo({english})}), true},
      {"behind a table of length 0 mod 4", VersionInfo(0, 0, 0, 0, {StringFileInfo({german, english})}), false},
      {"behind a table of length 2 mod 4",
       VersionInfo(0, 0, 0, 0, {StringFileInfo({Table(u"040704b0", {Odd()}), english})}), true},
  };
  for (Case const &c : cases) {
    Bytes block = Serialize(c.info);
    ZnVersionResource version(block.data());
    EXPECT_EQ(c.found ? u"value" : u"<null>", Lookup(version, u"Key")) << c.what;
    EXPECT_EQ(version.GetFileVersion(), "0.0.0.0") << c.what;
  }
}

TEST(ZnVersionResourceTest, UnboundObjectsHaveNothing) {
  Bytes block = Serialize(VersionNode{u"VS_VERSION_INFO", Bytes(52, 0x11), 52, 0, {}, -1});
  int module = 0;
  ZnVersionResource unbound[] = {ZnVersionResource(static_cast<unsigned char *>(nullptr)),
                                 ZnVersionResource(static_cast<HINSTANCE>(&module)),
                                 ZnVersionResource(block.data())};  // no fixed part signature
  for (ZnVersionResource &version : unbound) {
    EXPECT_EQ(version.GetFileVersion(), NULL_STRING);
    EXPECT_EQ(version.GetProductVersion(), NULL_STRING);
    version.SetFileVersion("1.2.3.4");
    version.SetProductVersion("1.2.3.4");
    ZnULong length = 5;
    EXPECT_EQ(nullptr, version.GetString(Key(u"CompanyName").data(), &length));
    EXPECT_EQ(0u, length);
  }
  EXPECT_EQ(block, Serialize(VersionNode{u"VS_VERSION_INFO", Bytes(52, 0x11), 52, 0, {}, -1}));
}

TEST(ZnVersionResourceTest, CopiesShareTheBlock) {
  Bytes block = Serialize(TypicalVersionInfo());
  ZnVersionResource version(block.data());
  ZnVersionResource copy(version);
  copy.SetProductVersion("9.8.7.6");
  EXPECT_EQ(version.GetProductVersion(), "9.8.7.6");
  ZnVersionResource assigned(static_cast<unsigned char *>(nullptr));
  assigned = version;
  EXPECT_EQ(u"Anvil", Lookup(assigned, u"ProductName"));
}

TEST(ZnVersionResourceTest, ReadsNothingBeyondTheBlockLength) {
  // The outer length ends inside the string table; the bytes behind it are
  // not even allocated, so a read there is caught.
  VersionNode info = TypicalVersionInfo();
  info.length = 120;
  Bytes const whole = Serialize(info);
  Bytes cut(whole.begin(), whole.begin() + 120);
  ZnVersionResource version(cut.data());
  EXPECT_EQ(version.GetFileVersion(), "2.13.0.7");
  EXPECT_EQ(u"<null>", Lookup(version, u"ProductName"));
  EXPECT_EQ(u"<null>", Lookup(version, u"NoSuchKey"));
  // A length too short for the fixed part leaves no fixed part.
  info.length = 60;
  Bytes const shortWhole = Serialize(info);
  Bytes shortCut(shortWhole.begin(), shortWhole.begin() + 60);
  EXPECT_EQ(ZnVersionResource(shortCut.data()).GetFileVersion(), NULL_STRING);
}

TEST(ZnVersionResourceTest, ReadsAndStampsTheRealImage) {
  TempDirectory folder;
  Bytes const original = ReadBytes(SampleImagePath());
  std::string const path = folder.Write("sample.exe", original);
  {
    ZnExeResources image(path.c_str());
    ZnVersionResource version(static_cast<unsigned char *>(image.FindResourceA(RT_VERSION, 1, 0x409)));
    EXPECT_EQ(version.GetFileVersion(), "2.13.0.7");
    EXPECT_EQ(version.GetProductVersion(), "2.13.0.0");
    EXPECT_EQ(u"ZNUTIL project", Lookup(version, u"CompanyName"));
    EXPECT_EQ(u"2.13", Lookup(version, u"ProductVersion"));
    EXPECT_EQ(u"sample.exe", Lookup(version, u"originalfilename"));
    version.SetFileVersion("3.1.4.1");
    version.SetProductVersion("3.1");
  }
  Bytes const stamped = ReadBytes(path);
  std::size_t const fixed = FindFixedInfo(stamped);
  ASSERT_NE(std::string::npos, fixed);
  EXPECT_EQ(fixed, FindFixedInfo(original));
  EXPECT_EQ(0x00030001u, Dword(stamped, fixed + kFileMS));
  EXPECT_EQ(0x00040001u, Dword(stamped, fixed + kFileLS));
  EXPECT_EQ(0x00030001u, Dword(stamped, fixed + kProductMS));
  EXPECT_EQ(0u, Dword(stamped, fixed + kProductLS));
  // Nothing else in the file changed.
  Bytes restored = stamped;
  std::copy(original.begin() + fixed + kFileMS, original.begin() + fixed + kProductLS + 4,
            restored.begin() + fixed + kFileMS);
  EXPECT_EQ(original, restored);
}

}  // namespace
