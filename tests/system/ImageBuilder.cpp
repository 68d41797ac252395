#include "ImageBuilder.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

namespace imagetest {
namespace {

void PadTo4(Bytes &bytes) { bytes.resize((bytes.size() + 3) / 4 * 4); }

Bytes Utf16(std::u16string const &text) {
  Bytes bytes;
  for (char16_t unit : text) {
    bytes.push_back(static_cast<unsigned char>(unit));
    bytes.push_back(static_cast<unsigned char>(unit >> 8));
  }
  bytes.push_back(0);
  bytes.push_back(0);
  return bytes;
}

Bytes FixedInfo(std::uint32_t fileMS, std::uint32_t fileLS, std::uint32_t productMS, std::uint32_t productLS) {
  std::uint32_t const words[13] = {0xFEEF04BD, 0x10000, fileMS, fileLS, productMS, productLS, 0x3F, 0, 4, 1, 0, 0, 0};
  Bytes bytes(sizeof words);
  std::memcpy(bytes.data(), words, sizeof words);
  return bytes;
}

// Appends a resource directory of numbered entries, behind `named` entries
// left for the caller, and returns its offset. Each entry leads to what
// `child` appends for its value and returns.
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

// The tree depth first, each directory followed by what it leads to, with
// a data entry right behind each language; then the data, 4-aligned. With
// `end`, the last data is moved to end there. Fills in where each data lies.
Bytes ResourceSection(std::vector<Resource> const &resources, int namedTypes, std::size_t end,
                      std::vector<std::size_t> &blobs) {
  std::map<std::uint16_t, std::map<std::uint16_t, std::map<std::uint16_t, std::size_t>>> tree;
  for (std::size_t i = 0; i < resources.size(); ++i) tree[resources[i].type][resources[i].id][resources[i].language] = i;
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
  for (std::size_t i = 0; i < resources.size(); ++i) {
    PadTo4(section);
    bool const last = end != 0 && i + 1 == resources.size();
    blobs.push_back(last ? end - resources[i].data.size() : section.size());
    if (blobs[i] % 4 != 0 || blobs[i] < section.size()) throw std::logic_error("the data cannot end the file");
    section.resize(blobs[i]);
    section.insert(section.end(), resources[i].data.begin(), resources[i].data.end());
    PutDword(section, dataEntries[i], static_cast<std::uint32_t>(kResourceVirtual + blobs[i]));
    PutDword(section, dataEntries[i] + 4, static_cast<std::uint32_t>(resources[i].data.size()));
  }
  return section;
}

}  // namespace

Bytes Serialize(VersionNode const &node) {
  Bytes block(6);
  Bytes const key = Utf16(node.key);
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

std::vector<unsigned short> Key(std::u16string const &text) {
  std::vector<unsigned short> key(text.begin(), text.end());
  key.push_back(0);
  return key;
}

VersionNode Text(std::u16string const &key, std::u16string const &value) {
  return VersionNode{key, Utf16(value), static_cast<std::uint16_t>(value.size() + 1), 1, {}, -1};
}

VersionNode Table(std::u16string const &language, std::vector<VersionNode> strings) {
  return VersionNode{language, {}, 0, 1, std::move(strings), -1};
}

VersionNode StringFileInfo(std::vector<VersionNode> tables) {
  return VersionNode{u"StringFileInfo", {}, 0, 1, std::move(tables), -1};
}

VersionNode VarFileInfo() {
  VersionNode translation{u"Translation", {0x09, 0x04, 0xB0, 0x04}, 4, 0, {}, -1};
  return VersionNode{u"VarFileInfo", {}, 0, 1, {translation}, -1};
}

VersionNode VersionInfo(std::uint32_t fileMS, std::uint32_t fileLS, std::uint32_t productMS, std::uint32_t productLS,
                        std::vector<VersionNode> children) {
  return VersionNode{
      u"VS_VERSION_INFO", FixedInfo(fileMS, fileLS, productMS, productLS), 52, 0, std::move(children), -1};
}

VersionNode TypicalVersionInfo() {
  VersionNode comments{u"Comments", {}, 0, 1, {}, -1};
  VersionNode table =
      Table(u"040904b0", {Text(u"CompanyName", u"Acme Tools"), comments, Text(u"ProductName", u"Anvil")});
  return VersionInfo(0x0002000D, 0x00000007, 0x0002000D, 0, {StringFileInfo({table}), VarFileInfo()});
}

Image BuildImage(std::vector<Resource> const &resources, int namedTypes, bool endOfFile) {
  std::size_t const room = endOfFile ? 0x1000 - kResourceRaw : 0x400;
  std::vector<std::size_t> blobs;
  Bytes const section = ResourceSection(resources, namedTypes, endOfFile ? room : 0, blobs);
  if (section.size() > room) throw std::logic_error("the resources do not fit the sample's section");
  Image image{ReadBytes(SampleImagePath()), {}, kResourceRaw + 16 + 8 * namedTypes};
  std::fill_n(image.bytes.begin() + kResourceRaw, room, 0);
  std::copy(section.begin(), section.end(), image.bytes.begin() + kResourceRaw);
  PutDword(image.bytes, kOptionalHeader + 96 + 8 * 2 + 4, static_cast<std::uint32_t>(section.size()));
  PutDword(image.bytes, kResourceSectionHeader + 8, static_cast<std::uint32_t>(section.size()));
  PutDword(image.bytes, kResourceSectionHeader + 16, static_cast<std::uint32_t>(room));
  for (std::size_t blob : blobs) image.dataOffsets.push_back(kResourceRaw + blob);
  return image;
}

Bytes ReadBytes(std::string const &path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string WriteBytes(std::string const &path, Bytes const &bytes) {
  std::remove(path.c_str());
  std::ofstream(path, std::ios::binary).write(reinterpret_cast<char const *>(bytes.data()), bytes.size());
  return path;
}

std::string SampleImagePath() { return ZNUTIL_TEST_IMAGES_DIR "/sample.exe"; }

std::size_t FindFixedInfo(Bytes const &bytes) {
  for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4)
    if (Dword(bytes, at) == 0xFEEF04BD) return at;
  return std::string::npos;
}

std::uint32_t Dword(Bytes const &bytes, std::size_t offset) {
  std::uint32_t value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

void PutDword(Bytes &bytes, std::size_t offset, std::uint32_t value) {
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

void PutWord(Bytes &bytes, std::size_t offset, std::uint16_t value) {
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

}  // namespace imagetest
