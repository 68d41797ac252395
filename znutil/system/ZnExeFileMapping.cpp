#include <znutil/system/ZnExeFileMapping.h>

#include <cstring>

#include <znutil/platform/File.h>
#include <znutil/platform/FileMapping.h>
#include <znutil/system/internal/ImageBytes.h>

using znutil::detail::ReadDword;
using znutil::detail::ReadWord;

namespace {

// Distances from the NT signature, fixed for the 32-bit optional header.
constexpr std::size_t kFileHeaderOffset = 4;
constexpr std::size_t kOptionalHeaderOffset = 24;
constexpr std::size_t kSectionTableOffset = 248;

char *CopyOf(char const *text) {
  if (text == nullptr) return nullptr;
  char *copy = new char[std::strlen(text) + 1];
  std::strcpy(copy, text);
  return copy;
}

// The name field as text: up to its first zero, or all eight bytes.
bool SectionNameIs(IMAGE_SECTION_HEADER const &section, char const *name) {
  auto const *field = reinterpret_cast<char const *>(section.Name);
  std::size_t const length = strnlen(field, IMAGE_SIZEOF_SHORT_NAME);
  return std::strlen(name) == length && std::memcmp(field, name, length) == 0;
}

}  // namespace

ZnExeFileMapping::ZnExeFileMapping()
    : hFile(nullptr), hMapping(nullptr), pAddress(nullptr), pFilePath(nullptr), nViewSize(0), piViewOwners(nullptr) {}

ZnExeFileMapping::ZnExeFileMapping(char const *path) : ZnExeFileMapping() {
  SetFilePath(path);
  Open();
}

ZnExeFileMapping::ZnExeFileMapping(ZnExeFileMapping const &other) : ZnExeFileMapping() { ShareViewOf(other); }

ZnExeFileMapping::~ZnExeFileMapping() {
  Close();
  delete[] pFilePath;
}

ZnExeFileMapping &ZnExeFileMapping::operator=(ZnExeFileMapping const &other) {
  if (this != &other) {
    Close();
    ShareViewOf(other);
  }
  return *this;
}

void ZnExeFileMapping::ShareViewOf(ZnExeFileMapping const &other) {
  // The path is copied rather than shared: each object frees its own.
  SetFilePath(other.pFilePath);
  hFile = other.hFile;
  hMapping = other.hMapping;
  pAddress = other.pAddress;
  nViewSize = other.nViewSize;
  piViewOwners = other.piViewOwners;
  if (piViewOwners != nullptr) ++*piViewOwners;
}

void ZnExeFileMapping::SetFilePath(char const *path) {
  char *copy = CopyOf(path);
  delete[] pFilePath;
  pFilePath = copy;
}

bool ZnExeFileMapping::Open(char const *path) {
  SetFilePath(path);
  return Open();
}

bool ZnExeFileMapping::Open() {
  using namespace znutil::platform;
  if (pFilePath == nullptr || pAddress != nullptr) return false;
  HANDLE file = CreateFileA(pFilePath, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return false;
  HANDLE mapping = CreateFileMappingA(file);
  void *view = mapping != nullptr ? MapViewOfFile(mapping, &nViewSize) : nullptr;
  if (view == nullptr) {
    if (mapping != nullptr) CloseHandle(mapping);
    CloseHandle(file);
    return false;
  }
  hFile = file;
  hMapping = mapping;
  pAddress = view;
  piViewOwners = new int(1);
  return true;
}

bool ZnExeFileMapping::Close() {
  using namespace znutil::platform;
  // Only the last object that shares the view releases it; the others let
  // go of it, so that no copy is left pointing into an unmapped view.
  if (piViewOwners != nullptr && --*piViewOwners == 0) {
    UnmapViewOfFile(pAddress);
    CloseHandle(hMapping);
    CloseHandle(hFile);
    delete piViewOwners;
  }
  hFile = hMapping = nullptr;
  pAddress = nullptr;
  nViewSize = 0;
  piViewOwners = nullptr;
  return true;
}

bool ZnExeFileMapping::InView(void const *address, std::size_t bytes) const {
  return znutil::detail::Within(address, bytes, pAddress, static_cast<unsigned char *>(pAddress) + nViewSize);
}

unsigned char *ZnExeFileMapping::HeaderAt(std::size_t offset, std::size_t bytes) {
  auto *base = static_cast<unsigned char *>(pAddress);
  if (!InView(base, sizeof(IMAGE_DOS_HEADER))) return nullptr;
  LONG const signature = static_cast<LONG>(ReadDword(base + offsetof(IMAGE_DOS_HEADER, e_lfanew)));
  if (signature < 0) return nullptr;
  std::size_t const start = static_cast<std::size_t>(signature) + offset;
  return start <= nViewSize && bytes <= nViewSize - start ? base + start : nullptr;
}

void *ZnExeFileMapping::NTSignatureAddress() { return HeaderAt(0, sizeof(DWORD)); }

void *ZnExeFileMapping::PEFileHeaderAddress() { return HeaderAt(kFileHeaderOffset, sizeof(IMAGE_FILE_HEADER)); }

void *ZnExeFileMapping::OptHeaderAddress() { return HeaderAt(kOptionalHeaderOffset, sizeof(IMAGE_OPTIONAL_HEADER32)); }

void *ZnExeFileMapping::SectionHeaderAddress() {
  return HeaderAt(kSectionTableOffset, sizeof(IMAGE_SECTION_HEADER) * NumberOfSections());
}

int ZnExeFileMapping::NumberOfSections() {
  auto const *header = static_cast<unsigned char *>(PEFileHeaderAddress());
  return header != nullptr ? ReadWord(header + offsetof(IMAGE_FILE_HEADER, NumberOfSections)) : 0;
}

template <typename Matches>
bool ZnExeFileMapping::FindSection(Matches matches, IMAGE_SECTION_HEADER *found) {
  auto const *table = static_cast<unsigned char *>(SectionHeaderAddress());
  if (table == nullptr) return false;
  for (int i = 0, count = NumberOfSections(); i < count; ++i) {
    std::memcpy(found, table + i * sizeof *found, sizeof *found);
    if (matches(*found)) return true;
  }
  return false;
}

bool ZnExeFileMapping::GetSectionHeaderByName(IMAGE_SECTION_HEADER *header, char const *name) {
  IMAGE_SECTION_HEADER section;
  if (name == nullptr ||
      !FindSection([name](IMAGE_SECTION_HEADER const &s) { return SectionNameIs(s, name); }, &section))
    return false;
  *header = section;
  return true;
}

void *ZnExeFileMapping::GetDirectoryAddress(ZnULong index) {
  auto const *optional = static_cast<unsigned char *>(OptHeaderAddress());
  if (optional == nullptr || index >= ReadDword(optional + offsetof(IMAGE_OPTIONAL_HEADER32, NumberOfRvaAndSizes)))
    return nullptr;
  // A count above 16 is taken at its word: such entries are read from
  // whatever follows, as long as it lies in the view.
  std::size_t const entry = offsetof(IMAGE_OPTIONAL_HEADER32, DataDirectory) + index * sizeof(IMAGE_DATA_DIRECTORY);
  auto const *directory = HeaderAt(kOptionalHeaderOffset + entry, sizeof(IMAGE_DATA_DIRECTORY));
  if (directory == nullptr) return nullptr;
  std::uint64_t const address = ReadDword(directory);
  IMAGE_SECTION_HEADER section;
  auto const covers = [address](IMAGE_SECTION_HEADER const &s) {
    return s.VirtualAddress <= address && address < std::uint64_t{s.VirtualAddress} + s.SizeOfRawData;
  };
  if (!FindSection(covers, &section)) return nullptr;
  std::uint64_t const offset = address - section.VirtualAddress + section.PointerToRawData;
  return offset < nViewSize ? static_cast<unsigned char *>(pAddress) + offset : nullptr;
}
