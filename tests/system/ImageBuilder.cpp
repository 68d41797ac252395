#include "ImageBuilder.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
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

void PutText(Bytes &bytes, std::size_t offset, std::string const &text) {
  std::memcpy(bytes.data() + offset, text.data(), text.size());
}

// Offsets of the parts of the resource section, from its start.
struct ResourceLayout {
  std::map<std::uint16_t, std::map<std::uint16_t, std::map<std::uint16_t, std::size_t>>> tree;
  std::map<std::uint16_t, std::size_t> typeDirectories;
  std::map<std::pair<std::uint16_t, std::uint16_t>, std::size_t> idDirectories;
  std::vector<std::size_t> dataEntries, names, blobs;
  std::size_t size = 0;
};

ResourceLayout Layout(std::vector<Resource> const &resources, ImageOptions const &options) {
  ResourceLayout layout;
  for (std::size_t i = 0; i < resources.size(); ++i)
    layout.tree[resources[i].type][resources[i].id][resources[i].language] = i;
  std::size_t offset = 16 + 8 * (options.namedTypes + layout.tree.size());
  for (auto const &[type, ids] : layout.tree) {
    layout.typeDirectories[type] = offset;
    offset += 16 + 8 * ids.size();
  }
  for (auto const &[type, ids] : layout.tree)
    for (auto const &[id, languages] : ids) {
      layout.idDirectories[{type, id}] = offset;
      offset += 16 + 8 * languages.size();
    }
  for (std::size_t i = 0; i < resources.size(); ++i, offset += 16) layout.dataEntries.push_back(offset);
  for (int i = 0; i < options.namedTypes; ++i, offset += 16) layout.names.push_back(offset);
  for (Resource const &resource : resources) {
    offset = (offset + 3) / 4 * 4;
    layout.blobs.push_back(offset);
    offset += resource.data.size();
  }
  if (options.endAt != 0 && !resources.empty()) {
    std::size_t const last = options.endAt - kResourceRaw - resources.back().data.size();
    if (last % 4 != 0 || last < layout.blobs.back()) throw std::logic_error("endAt cannot be met");
    layout.blobs.back() = last;
    offset = options.endAt - kResourceRaw;
  }
  layout.size = offset;
  return layout;
}

void PutDirectory(Bytes &section, std::size_t at, std::size_t named, std::size_t ids) {
  PutWord(section, at + 12, static_cast<std::uint16_t>(named));
  PutWord(section, at + 14, static_cast<std::uint16_t>(ids));
}

void PutEntry(Bytes &section, std::size_t at, std::uint32_t name, std::uint32_t offset) {
  PutDword(section, at, name);
  PutDword(section, at + 4, offset);
}

Bytes ResourceSection(std::vector<Resource> const &resources, ImageOptions const &options,
                      ResourceLayout const &layout) {
  constexpr std::uint32_t kDirectory = 0x80000000;
  Bytes section(layout.size);
  PutDirectory(section, 0, options.namedTypes, layout.tree.size());
  std::size_t entry = 16;
  for (std::size_t name : layout.names) {
    PutWord(section, name, 5);
    PutText(section, name + 2, std::string("N\0A\0M\0E\0D\0", 10));
    PutEntry(section, entry, kDirectory | name, kDirectory | layout.typeDirectories.begin()->second);
    entry += 8;
  }
  for (auto const &[type, ids] : layout.tree) {
    std::size_t const typeDirectory = layout.typeDirectories.at(type);
    PutEntry(section, entry, type, kDirectory | typeDirectory);
    entry += 8;
    PutDirectory(section, typeDirectory, 0, ids.size());
    std::size_t idEntry = typeDirectory + 16;
    for (auto const &[id, languages] : ids) {
      std::size_t const idDirectory = layout.idDirectories.at({type, id});
      PutEntry(section, idEntry, id, kDirectory | idDirectory);
      idEntry += 8;
      PutDirectory(section, idDirectory, 0, languages.size());
      std::size_t languageEntry = idDirectory + 16;
      for (auto const &[language, index] : languages) {
        PutEntry(section, languageEntry, language, static_cast<std::uint32_t>(layout.dataEntries[index]));
        languageEntry += 8;
      }
    }
  }
  for (std::size_t i = 0; i < resources.size(); ++i) {
    PutDword(section, layout.dataEntries[i], static_cast<std::uint32_t>(kResourceVirtual + layout.blobs[i]));
    PutDword(section, layout.dataEntries[i] + 4, static_cast<std::uint32_t>(resources[i].data.size()));
    std::copy(resources[i].data.begin(), resources[i].data.end(), section.begin() + layout.blobs[i]);
  }
  return section;
}

void PutSection(Bytes &image, int index, std::string const &name, std::uint32_t virtualAddress, std::uint32_t size,
                std::uint32_t raw) {
  std::size_t const at = kSectionTableOffset + 40 * index;
  PutText(image, at, name.substr(0, 8));
  PutDword(image, at + 8, size);
  PutDword(image, at + 12, virtualAddress);
  PutDword(image, at + 16, size);
  PutDword(image, at + 20, raw);
  PutDword(image, at + 36, 0x40000040);
}

Bytes Headers(ImageOptions const &options, std::uint32_t resourceSize) {
  Bytes image(kResourceRaw);
  PutText(image, 0, "MZ");
  PutDword(image, 60, kSignatureOffset);
  PutText(image, kSignatureOffset, std::string("PE\0\0", 4));
  std::size_t const file = kSignatureOffset + 4, optional = kSignatureOffset + 24;
  PutWord(image, file, 0x14C);
  PutWord(image, file + 2, 2);
  PutWord(image, file + 16, 224);
  PutWord(image, file + 18, 0x102);
  PutWord(image, optional, 0x10B);
  PutDword(image, optional + 32, 0x1000);
  PutDword(image, optional + 36, 0x200);
  PutDword(image, optional + 56, kResourceVirtual + 0x1000);
  PutDword(image, optional + 60, 0x200);
  PutWord(image, optional + 68, 2);
  PutDword(image, optional + 92, options.numberOfRvaAndSizes);
  PutDword(image, optional + 96 + 8 * 2, kResourceVirtual);
  PutDword(image, optional + 96 + 8 * 2 + 4, resourceSize);
  PutSection(image, 0, ".text", 0x1000, 0x200, 0x200);
  PutSection(image, 1, options.resourceSectionName, kResourceVirtual, resourceSize, kResourceRaw);
  std::fill(image.begin() + 0x200, image.end(), 0xC3);
  return image;
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

Image BuildImage(std::vector<Resource> const &resources, ImageOptions const &options) {
  ResourceLayout const layout = Layout(resources, options);
  Bytes const section = ResourceSection(resources, options, layout);
  Image image{
      Headers(options, static_cast<std::uint32_t>(section.size())), {}, kResourceRaw + 16 + 8 * options.namedTypes};
  image.bytes.insert(image.bytes.end(), section.begin(), section.end());
  for (std::size_t blob : layout.blobs) image.dataOffsets.push_back(kResourceRaw + blob);
  return image;
}

Bytes ReadBytes(std::filesystem::path const &path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void WriteBytes(std::filesystem::path const &path, Bytes const &bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<char const *>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::filesystem::path SampleImagePath() { return std::filesystem::path(ZNUTIL_TEST_IMAGES_DIR) / "sample.exe"; }

TempDirectory::TempDirectory() {
  std::random_device random;
  path_ =
      std::filesystem::temp_directory_path() / ("znutil-images-" + std::to_string(random()) + std::to_string(random()));
  std::filesystem::create_directories(path_);
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TempDirectory::Write(std::string const &name, Bytes const &bytes) const {
  std::filesystem::path const path = path_ / name;
  // A new file rather than a truncated one: some file systems flush a file
  // that is truncated and written again when it is closed.
  std::filesystem::remove(path);
  WriteBytes(path, bytes);
  return path.string();
}

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
