// Test helpers: 32-bit PE images and version resources built byte by byte,
// temporary files, and the committed sample image.
#ifndef ZNUTIL_TESTS_SYSTEM_IMAGEBUILDER_H
#define ZNUTIL_TESTS_SYSTEM_IMAGEBUILDER_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace imagetest {

using Bytes = std::vector<unsigned char>;

// Layout of the images BuildImage makes.
constexpr std::size_t kSignatureOffset = 0x80;
constexpr std::size_t kSectionTableOffset = kSignatureOffset + 248;
constexpr std::size_t kResourceRaw = 0x400;
constexpr std::uint32_t kResourceVirtual = 0x2000;

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

// A text entry of a string table; valueLength counts the terminator.
VersionNode Text(std::u16string const &key, std::u16string const &value);
VersionNode Table(std::u16string const &language, std::vector<VersionNode> strings);
VersionNode StringFileInfo(std::vector<VersionNode> tables);
VersionNode VarFileInfo();
// VS_VERSION_INFO with a fixed part holding the four version words.
VersionNode VersionInfo(std::uint32_t fileMS, std::uint32_t fileLS, std::uint32_t productMS, std::uint32_t productLS,
                        std::vector<VersionNode> children);

// A typical block: version 2.13.0.7, product 2.13.0.0, an English table
// with CompanyName, ProductName and an empty Comments entry.
VersionNode TypicalVersionInfo();

struct Resource {
  std::uint16_t type;
  std::uint16_t id;
  std::uint16_t language;
  Bytes data;
};

struct ImageOptions {
  // Named entries placed in front of the numbered ones at the type level.
  int namedTypes = 0;
  std::string resourceSectionName = ".rsrc";
  std::uint32_t numberOfRvaAndSizes = 16;
  // When not 0, the last resource's data ends exactly here, at the end of
  // the file; the data's size must keep it 4-aligned.
  std::size_t endAt = 0;
};

struct Image {
  Bytes bytes;
  // File offsets of each resource's data, in the order given.
  std::vector<std::size_t> dataOffsets;
  // File offset of the first numbered entry of the root directory.
  std::size_t rootIdEntries = 0;
};

Image BuildImage(std::vector<Resource> const &resources, ImageOptions const &options = {});

// Files.
Bytes ReadBytes(std::filesystem::path const &path);
void WriteBytes(std::filesystem::path const &path, Bytes const &bytes);
std::filesystem::path SampleImagePath();

// A fresh folder under the temporary directory, removed with its contents.
class TempDirectory {
 public:
  TempDirectory();
  ~TempDirectory();
  TempDirectory(TempDirectory const &) = delete;
  TempDirectory &operator=(TempDirectory const &) = delete;
  std::filesystem::path const &Path() const { return path_; }
  // Writes `bytes` to a file of that name in the folder and returns its path.
  std::string Write(std::string const &name, Bytes const &bytes) const;

 private:
  std::filesystem::path path_;
};

// Offset of the first 4-aligned 0xFEEF04BD, the signature of the fixed
// version information; npos when there is none.
std::size_t FindFixedInfo(Bytes const &bytes);
std::uint32_t Dword(Bytes const &bytes, std::size_t offset);
void PutDword(Bytes &bytes, std::size_t offset, std::uint32_t value);
void PutWord(Bytes &bytes, std::size_t offset, std::uint16_t value);

}  // namespace imagetest

#endif  // ZNUTIL_TESTS_SYSTEM_IMAGEBUILDER_H
