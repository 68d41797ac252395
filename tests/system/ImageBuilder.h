// Test helpers: 32-bit PE images and version resources built byte by byte,
// and the committed sample image.
#ifndef ZNUTIL_TESTS_SYSTEM_IMAGEBUILDER_H
#define ZNUTIL_TESTS_SYSTEM_IMAGEBUILDER_H

#include <cstddef>
#include <cstdint>
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

// A block of a version resource in the format's own layout: header, key,
// padding to 4, value, then each child padded to 4. wLength covers all but
// the padding behind the last child, unless `length` overrides it.
struct VersionNode {
  std::u16string key;
  Bytes value;
  std::uint16_t valueLength = 0;
  std::uint16_t type = 1;
  std::vector<VersionNode> children;
  int length = -1;
};

Bytes Serialize(VersionNode const &node);
// A key for ZnVersionResource::GetString: 16-bit units and a terminator.
std::vector<unsigned short> Key(std::u16string const &text);

// A text entry of a string table; valueLength counts the terminator.
VersionNode Text(std::u16string const &key, std::u16string const &value);
VersionNode Table(std::u16string const &language, std::vector<VersionNode> strings);
VersionNode StringFileInfo(std::vector<VersionNode> tables);
VersionNode VarFileInfo();
// VS_VERSION_INFO with a fixed part holding the four version words.
VersionNode VersionInfo(std::uint32_t fileMS, std::uint32_t fileLS, std::uint32_t productMS, std::uint32_t productLS,
                        std::vector<VersionNode> children);
// Version 2.13.0.7, product 2.13.0.0, an English table with CompanyName,
// ProductName and an empty Comments entry.
VersionNode TypicalVersionInfo();

struct Resource {
  std::uint16_t type, id, language;
  Bytes data;
};

struct Image {
  Bytes bytes;
  std::vector<std::size_t> dataOffsets;  // file offset of each resource's data
  std::size_t rootIdEntries = 0;         // file offset of the first numbered root entry
};

// The sample image with its resource section replaced by a tree of
// `resources`, behind `namedTypes` named entries at the type level. With
// `endOfFile` the section takes the room up to the end of the one-page file
// and the last resource's data ends there; its size must keep it 4-aligned.
Image BuildImage(std::vector<Resource> const &resources, int namedTypes = 0, bool endOfFile = false);

Bytes ReadBytes(std::string const &path);
// Writes a new file, rather than truncating an old one (which some file
// systems flush when it is closed), and returns its path.
std::string WriteBytes(std::string const &path, Bytes const &bytes);
std::string SampleImagePath();

// Offset of the first 4-aligned 0xFEEF04BD, the signature of the fixed
// version information; npos when there is none.
std::size_t FindFixedInfo(Bytes const &bytes);
std::uint32_t Dword(Bytes const &bytes, std::size_t offset);
void PutDword(Bytes &bytes, std::size_t offset, std::uint32_t value);
void PutWord(Bytes &bytes, std::size_t offset, std::uint16_t value);

}  // namespace imagetest

#endif  // ZNUTIL_TESTS_SYSTEM_IMAGEBUILDER_H
