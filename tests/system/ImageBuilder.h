// Test helpers: 32-bit PE images and version resources built byte by byte, and the committed sample image.
#ifndef ZNUTIL_TESTS_SYSTEM_IMAGEBUILDER_H
#define ZNUTIL_TESTS_SYSTEM_IMAGEBUILDER_H

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace imagetest {

using Bytes = std::vector<unsigned char>;

// Layout of the committed sample image, which BuildImage's images share.
constexpr int kSampleSections = 5;
constexpr std::size_t kSignatureOffset = 0x80;
constexpr std::size_t kOptionalHeader = kSignatureOffset + 24;
constexpr std::size_t kResourceSectionHeader = kSignatureOffset + 248 + 3 * 40;  // ".rsrc", the fourth
constexpr std::size_t kResourceRaw = 0xA00;
constexpr std::uint32_t kResourceVirtual = 0x4000;

inline std::uint32_t Dword(Bytes const &bytes, std::size_t offset) {
  std::uint32_t value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}
inline void PutDword(Bytes &bytes, std::size_t offset, std::uint32_t value) { std::memcpy(&bytes[offset], &value, 4); }
inline void PutWord(Bytes &bytes, std::size_t offset, std::uint16_t value) { std::memcpy(&bytes[offset], &value, 2); }
inline void PadTo4(Bytes &bytes) { bytes.resize((bytes.size() + 3) / 4 * 4); }

inline Bytes ReadBytes(std::string const &path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}
// Writes a new file, rather than truncating an old one (which some file systems flush when it is closed), and
// returns its path.
inline std::string WriteBytes(std::string const &path, Bytes const &bytes) {
  std::remove(path.c_str());
  std::ofstream(path, std::ios::binary).write(reinterpret_cast<char const *>(bytes.data()), bytes.size());
  return path;
}
inline std::string SampleImagePath() { return ZNUTIL_TEST_IMAGES_DIR "/sample.exe"; }

// Offset of the first 4-aligned 0xFEEF04BD, the signature of the fixed version information; npos when there
// is none.
inline std::size_t FindFixedInfo(Bytes const &bytes) {
  for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4)
    if (Dword(bytes, at) == 0xFEEF04BD) return at;
  return std::string::npos;
}

// 16-bit units and a terminator, as a key for ZnVersionResource::GetString or as bytes of a block.
inline std::vector<unsigned short> Key(std::u16string const &text) {
  std::vector<unsigned short> key(text.begin(), text.end());
  key.push_back(0);
  return key;
}
inline Bytes Utf16(std::u16string const &text) {
  Bytes bytes(2 * text.size() + 2);
  std::memcpy(bytes.data(), Key(text).data(), bytes.size());
  return bytes;
}

// A block of a version resource in the format's own layout: header, key, padding to 4, value, then each child
// padded to 4. wLength covers all but the padding behind the last child, unless `length` overrides it.
struct VersionNode {
  std::u16string key;
  Bytes value{};
  std::uint16_t valueLength = 0;
  std::uint16_t type = 1;
  std::vector<VersionNode> children{};
  int length = -1;
};

inline Bytes Serialize(VersionNode const &node) {
  Bytes block(6), key = Utf16(node.key);
  block.insert(block.end(), key.begin(), key.end());
  PadTo4(block);
  block.insert(block.end(), node.value.begin(), node.value.end());
  for (VersionNode const &child : node.children) {
    PadTo4(block);
    Bytes const bytes = Serialize(child);
    block.insert(block.end(), bytes.begin(), bytes.end());
  }
  PutWord(block, 0, static_cast<std::uint16_t>(node.length >= 0 ? node.length : block.size()));
  PutWord(block, 2, node.valueLength);
  PutWord(block, 4, node.type);
  return block;
}

// A text entry of a string table; valueLength counts the terminator.
inline VersionNode Text(std::u16string const &key, std::u16string const &value) {
  return VersionNode{key, Utf16(value), static_cast<std::uint16_t>(value.size() + 1)};
}
inline VersionNode Table(std::u16string const &language, std::vector<VersionNode> strings) {
  return VersionNode{language, {}, 0, 1, std::move(strings)};
}
inline VersionNode StringFileInfo(std::vector<VersionNode> tables) { return Table(u"StringFileInfo", tables); }
inline VersionNode VarFileInfo() {
  return Table(u"VarFileInfo", {VersionNode{u"Translation", {0x09, 0x04, 0xB0, 0x04}, 4, 0}});
}
// VS_VERSION_INFO with a fixed part holding the four version words.
inline VersionNode VersionInfo(std::uint32_t fileMS, std::uint32_t fileLS, std::uint32_t productMS,
                               std::uint32_t productLS, std::vector<VersionNode> children) {
  std::uint32_t const words[13] = {0xFEEF04BD, 0x10000, fileMS, fileLS, productMS, productLS, 0x3F, 0, 4, 1};
  Bytes fixed(sizeof words);
  std::memcpy(fixed.data(), words, sizeof words);
  return VersionNode{u"VS_VERSION_INFO", fixed, 52, 0, std::move(children)};
}
// Version 2.13.0.7, product 2.13.0.0, an English table with CompanyName, ProductName and an empty Comments
// entry.
inline VersionNode TypicalVersionInfo() {
  VersionNode table = Table(u"040904b0", {Text(u"CompanyName", u"Acme Tools"), VersionNode{u"Comments"},
                                          Text(u"ProductName", u"Anvil")});
  return VersionInfo(0x0002000D, 0x00000007, 0x0002000D, 0, {StringFileInfo({table}), VarFileInfo()});
}

struct Resource {
  std::uint16_t type, id, language;
  Bytes data;
};

struct Image {
  Bytes bytes;
  std::vector<std::size_t> dataOffsets;  // file offset of each resource's data
  std::size_t rootIdEntries = 0;         // file offset of the first numbered root entry
};

// Appends a resource directory of numbered entries, behind `named` entries left for the caller, and returns
// its offset. Each entry leads to what `child` appends for its value and returns.
template <typename Entries, typename Child>
std::uint32_t PutDirectory(Bytes &section, Entries const &entries, Child const &child, int named = 0) {
  std::size_t const at = section.size();
  section.resize(at + 16 + 8 * (named + entries.size()));
  PutWord(section, at + 12, static_cast<std::uint16_t>(named));
  PutWord(section, at + 14, static_cast<std::uint16_t>(entries.size()));
  std::size_t entry = at + 16 + 8 * named;
  for (auto const &[number, value] : entries) {
    PutDword(section, entry, number);
    PutDword(section, entry + 4, child(value));
    entry += 8;
  }
  return static_cast<std::uint32_t>(at);
}

// The sample image with its resource section replaced by a tree of `resources`, behind `namedTypes` named
// entries at the type level: depth first, each directory followed by what it leads to, a data entry right
// behind each language, then the data, 4-aligned. With `endOfFile` the section takes the room up to the end
// of the one-page file and the last resource's data ends there; its size must keep it 4-aligned.
inline Image BuildImage(std::vector<Resource> const &resources, int namedTypes = 0, bool endOfFile = false) {
  std::size_t const room = endOfFile ? 0x1000 - kResourceRaw : 0x400;
  std::map<std::uint16_t, std::map<std::uint16_t, std::map<std::uint16_t, std::size_t>>> tree;
  for (std::size_t i = 0; i < resources.size(); ++i)
    tree[resources[i].type][resources[i].id][resources[i].language] = i;
  Bytes section;
  std::vector<std::size_t> dataEntries(resources.size());
  auto const data = [&](std::size_t index) {
    dataEntries[index] = section.size();
    section.resize(section.size() + 16);
    return static_cast<std::uint32_t>(dataEntries[index]);
  };
  auto const languages = [&](auto const &byLanguage) { return 0x80000000 | PutDirectory(section, byLanguage, data); };
  auto const ids = [&](auto const &byId) { return 0x80000000 | PutDirectory(section, byId, languages); };
  PutDirectory(section, tree, ids, namedTypes);
  for (int i = 0; i < namedTypes; ++i) {  // names that no lookup reads, leading to the first type
    PutDword(section, 16 + 8 * i, static_cast<std::uint32_t>(0x80000000 | section.size()));
    PutDword(section, 20 + 8 * i, Dword(section, 20 + 8 * namedTypes));
    Bytes const name = {5, 0, 'N', 0, 'A', 0, 'M', 0, 'E', 0, 'D', 0};
    section.insert(section.end(), name.begin(), name.end());
  }
  Image image{ReadBytes(SampleImagePath()), {}, kResourceRaw + 16 + 8 * namedTypes};
  for (std::size_t i = 0; i < resources.size(); ++i) {
    PadTo4(section);
    std::size_t const blob = endOfFile && i + 1 == resources.size() ? room - resources[i].data.size() : section.size();
    if (blob % 4 != 0 || blob < section.size()) throw std::logic_error("the data cannot end the file");
    section.resize(blob);
    section.insert(section.end(), resources[i].data.begin(), resources[i].data.end());
    PutDword(section, dataEntries[i], static_cast<std::uint32_t>(kResourceVirtual + blob));
    PutDword(section, dataEntries[i] + 4, static_cast<std::uint32_t>(resources[i].data.size()));
    image.dataOffsets.push_back(kResourceRaw + blob);
  }
  if (section.size() > room) throw std::logic_error("the resources do not fit the sample's section");
  std::fill_n(image.bytes.begin() + kResourceRaw, room, 0);
  std::copy(section.begin(), section.end(), image.bytes.begin() + kResourceRaw);
  PutDword(image.bytes, kOptionalHeader + 96 + 8 * 2 + 4, static_cast<std::uint32_t>(section.size()));
  PutDword(image.bytes, kResourceSectionHeader + 8, static_cast<std::uint32_t>(section.size()));
  PutDword(image.bytes, kResourceSectionHeader + 16, static_cast<std::uint32_t>(room));
  return image;
}

}  // namespace imagetest

#endif  // ZNUTIL_TESTS_SYSTEM_IMAGEBUILDER_H
