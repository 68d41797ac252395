#include <znutil/system/ZnVersionResource.h>

#include <array>
#include <cstring>

#include <sys/mman.h>

#include <gtest/gtest.h>
#include <znutil/system/ZnExeFileMapping.h>
#include <znutil/system/ZnExeResources.h>

#include "ImageBuilder.h"
#include "ScratchDirectory.h"

using namespace imagetest;

namespace {

// The four version words (file MS and LS, product MS and LS) of the fixed part at `fixed`; a block made by
// VersionInfo() has it at 40.
std::array<std::uint32_t, 4> Versions(Bytes const &block, std::size_t fixed = 40) {
  return {Dword(block, fixed + 8), Dword(block, fixed + 12), Dword(block, fixed + 16), Dword(block, fixed + 20)};
}

// The value of `key` as text, or "<null>"; the length in `*length`.
std::u16string Lookup(ZnVersionResource &version, std::u16string const &key, ZnULong *length = nullptr) {
  ZnULong ignored;
  if (length == nullptr) length = &ignored;
  unsigned short const *value = version.GetString(Key(key).data(), length);
  return value == nullptr ? u"<null>" : std::u16string(value, value + *length);
}

TEST(ZnVersionResourceTest, ReadsVersionsAndStringsWhateverTheCaseAndCopiesShareTheBlock) {
  Bytes block = Serialize(TypicalVersionInfo());
  ZnVersionResource version(block.data());
  EXPECT_EQ(version.GetFileVersion(), "2.13.0.7");
  EXPECT_EQ(version.GetProductVersion(), "2.13.0.0");
  version.SetFileVersion("0.0.0.0");
  EXPECT_EQ(version.GetFileVersion(), "0.0.0.0");
  version.SetFileVersion("2.13.0.7");  // writes the numbers back exactly
  EXPECT_EQ(block, Serialize(TypicalVersionInfo()));
  // String lengths count 16-bit units without the terminator.
  struct Case {
    char16_t const *key, *value;
    ZnULong length;
  } const cases[] = {{u"CompanyName", u"Acme Tools", 10}, {u"companyname", u"Acme Tools", 10},
                     {u"COMPANYNAME", u"Acme Tools", 10}, {u"productName", u"Anvil", 5},
                     {u"CompanyNam", u"<null>", 0},       {u"LegalCopyright", u"<null>", 0}};
  ZnULong length = 99;
  for (Case const &c : cases) {
    EXPECT_EQ(c.value, Lookup(version, c.key, &length));
    EXPECT_EQ(c.length, length);
  }
  // An entry without a value.
  EXPECT_EQ(nullptr, version.GetString(Key(u"Comments").data(), &length));
  EXPECT_EQ(0xFFFFFFFFu, length);

  ZnVersionResource copy(version), assigned(static_cast<unsigned char *>(nullptr));
  assigned = version;
  copy.SetProductVersion("9.8.7.6");
  EXPECT_EQ(assigned.GetProductVersion(), "9.8.7.6");
  EXPECT_EQ(u"Anvil", Lookup(assigned, u"ProductName"));
}

TEST(ZnVersionResourceTest, SetVersionReadsTokensAsStrtokAndAtoi) {
  // atoi("x") is 0, 70000 keeps its low 16 bits, and strtok skips empty tokens.
  struct Case {
    char const *text;
    std::uint32_t high, low;
  } const cases[] = {{"1.2", 0x00010002, 0},     {"", 0, 0},               {"1.x.3.4", 0x00010000, 0x00030004},
                     {"70000.1", 0x11700001, 0}, {"1..3", 0x00010003, 0},  {"1.2.3.4.5", 0x00010002, 0x00030004},
                     {".5", 0x00050000, 0},      {"-1.65536", 0xFFFF0000, 0}, {" 7.8x.9", 0x00070008, 0x00090000}};
  for (Case const &c : cases) {
    Bytes block = Serialize(TypicalVersionInfo());
    ZnVersionResource version(block.data());
    version.SetFileVersion(c.text);
    EXPECT_EQ(Versions(block), (std::array<std::uint32_t, 4>{c.high, c.low, 0x0002000D, 0})) << c.text;
    version.SetProductVersion(c.text);
    EXPECT_EQ(Versions(block), (std::array<std::uint32_t, 4>{c.high, c.low, c.high, c.low})) << c.text;
  }
}

TEST(ZnVersionResourceTest, FindsOnlyEnglishTablesReachedByLengthPlusTwo) {
  auto const table = [](std::u16string const &language) { return Table(language, {Text(u"Key", u"value")}); };
  // Children of 16 bytes (a length that is 0 modulo 4) and of 18.
  VersionNode const even = Table(u"040704b0", {Text(u"A", u"x")}), odd = Text(u"A", u"xy");
  ASSERT_EQ(0u, Serialize(even).size() % 4);
  ASSERT_EQ(0u, Serialize(VarFileInfo()).size() % 4);
  struct Case {
    char const *what;
    std::vector<VersionNode> children;
    bool found;
  } const cases[] = {
      {"040904b0 first", {StringFileInfo({table(u"040904b0")}), VarFileInfo()}, true},
      {"040904E4", {StringFileInfo({table(u"040904E4")})}, true},
      {"German", {StringFileInfo({table(u"040704b0")})}, false},
      {"another code page", {StringFileInfo({table(u"040904b1")})}, false},
      {"behind a child of length 0 mod 4", {VarFileInfo(), StringFileInfo({table(u"040904b0")})}, false},
      {"behind a child of length 2 mod 4", {odd, StringFileInfo({table(u"040904b0")})}, true},
      {"behind a table of length 0 mod 4", {StringFileInfo({even, table(u"040904b0")})}, false},
      {"behind a table of length 2 mod 4", {StringFileInfo({Table(u"040704b0", {odd}), table(u"040904b0")})}, true},
      {"in a second one", {StringFileInfo({Table(u"040704b0", {odd})}), StringFileInfo({table(u"040904b0")})}, true},
      {"the first of two",
       {StringFileInfo({Table(u"040904b0", {Text(u"Key", u"value"), odd})}),
        StringFileInfo({Table(u"040904E4", {Text(u"Key", u"later")})})},
       true},
  };
  for (Case const &c : cases) {
    Bytes block = Serialize(VersionInfo(0x00010002, 0x00030004, 0, 0, c.children));
    ZnVersionResource version(block.data());
    EXPECT_EQ(c.found ? u"value" : u"<null>", Lookup(version, u"Key")) << c.what;
    EXPECT_EQ(version.GetFileVersion(), "1.2.3.4") << c.what;
  }
}

TEST(ZnVersionResourceTest, FindsTheFixedPartBehindAKeyOfAnyLength) {
  VersionNode const strings = StringFileInfo({Table(u"040904b0", {Text(u"Key", u"value")})});
  for (std::u16string const key : {u"", u"VS_VERSION_INF", u"VS_VERSION_INFO", u"VS_VERSION_INFO_ab"}) {
    VersionNode info = VersionInfo(0x00010002, 0x00030004, 0, 0, {strings});
    info.key = key;
    Bytes block = Serialize(info);
    ZnVersionResource version(block.data());
    EXPECT_EQ(version.GetFileVersion(), "1.2.3.4") << "fixed part at " << FindFixedInfo(block);
    EXPECT_EQ(u"value", Lookup(version, u"Key")) << "fixed part at " << FindFixedInfo(block);
  }
}

TEST(ZnVersionResourceTest, UnboundObjectsHaveNothing) {
  Bytes const noSignature = Serialize(VersionNode{u"VS_VERSION_INFO", Bytes(52, 0x11), 52, 0});
  Bytes block = noSignature;
  int module = 0;
  ZnVersionResource unbound[] = {ZnVersionResource(static_cast<unsigned char *>(nullptr)),
                                 ZnVersionResource(static_cast<HINSTANCE>(&module)),
                                 ZnVersionResource(block.data())};
  for (ZnVersionResource &version : unbound) {
    EXPECT_EQ(version.GetFileVersion(), NULL_STRING);
    EXPECT_EQ(version.GetProductVersion(), NULL_STRING);
    version.SetFileVersion("1.2.3.4");
    version.SetProductVersion("1.2.3.4");
    ZnULong length = 5;
    EXPECT_EQ(u"<null>", Lookup(version, u"CompanyName", &length));
    EXPECT_EQ(0u, length);
  }
  EXPECT_EQ(block, noSignature);
}

TEST(ZnVersionResourceTest, ReadsNothingBeyondTheBlockLength) {
  // The bytes behind the outer length are not even allocated, so a read there is caught.
  auto const cut = [](int length) {
    VersionNode info = TypicalVersionInfo();
    info.length = length;
    Bytes const whole = Serialize(info);
    return Bytes(whole.begin(), whole.begin() + length);
  };
  Bytes insideTheTable = cut(120);
  ZnVersionResource version(insideTheTable.data());
  EXPECT_EQ(version.GetFileVersion(), "2.13.0.7");
  EXPECT_EQ(u"<null>", Lookup(version, u"ProductName"));
  EXPECT_EQ(u"<null>", Lookup(version, u"NoSuchKey"));
  Bytes insideTheFixedPart = cut(60);
  EXPECT_EQ(ZnVersionResource(insideTheFixedPart.data()).GetFileVersion(), NULL_STRING);
}

// A view is made and closed where a page of other memory follows it; then that memory takes its place too,
// and a block across the old view's end is read as a whole.
TEST(ZnVersionResourceTest, AClosedViewNoLongerBoundsWhatIsReadAtItsAddress) {
  znutil_test::ScratchDirectory folder;
  ZnExeFileMapping hole(WriteBytes(folder / "hole.bin", Bytes(8192, 0)).c_str());
  auto *const address = static_cast<unsigned char *>(hole.Address());
  hole.Close();
  int const flags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE;
  void *const plug = mmap(address + 4096, 4096, PROT_NONE, flags, -1, 0);
  ZnExeFileMapping view(WriteBytes(folder / "page.bin", Bytes(4096, 0)).c_str());
  bool const placed = plug == address + 4096 && view.Address() == address;
  view.Close();
  munmap(plug, 4096);
  void *const memory = placed ? mmap(address, 8192, PROT_READ | PROT_WRITE, flags, -1, 0) : MAP_FAILED;
  if (memory != address) GTEST_SKIP() << "the view could not be placed before other memory";
  Bytes const block = Serialize(TypicalVersionInfo());
  std::memcpy(address + 4096 - 64, block.data(), block.size());
  EXPECT_EQ(ZnVersionResource(address + 4096 - 64).GetFileVersion(), "2.13.0.7");
  munmap(memory, 8192);
}

TEST(ZnVersionResourceTest, ReadsAndStampsTheRealImage) {
  znutil_test::ScratchDirectory folder;
  Bytes const original = ReadBytes(SampleImagePath());
  std::string const path = WriteBytes(folder / "sample.exe", original);
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
  Bytes restored = ReadBytes(path);
  std::size_t const fixed = FindFixedInfo(restored);
  ASSERT_NE(std::string::npos, fixed);
  EXPECT_EQ(fixed, FindFixedInfo(original));
  EXPECT_EQ(Versions(restored, fixed), (std::array<std::uint32_t, 4>{0x00030001, 0x00040001, 0x00030001, 0}));
  // Nothing else in the file changed.
  std::copy_n(original.begin() + fixed + 8, 16, restored.begin() + fixed + 8);
  EXPECT_EQ(original, restored);
}

}  // namespace
