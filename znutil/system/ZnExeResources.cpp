#include <znutil/system/ZnExeResources.h>

#include <cstdint>

#include <znutil/system/internal/ImageBytes.h>

using znutil::detail::ReadDword;
using znutil::detail::ReadWord;

ZnExeResources::ZnExeResources() : pResourceRoot(nullptr), ishResourceSection() {}

ZnExeResources::ZnExeResources(char const *path)
    : ZnExeFileMapping(path), pResourceRoot(nullptr), ishResourceSection() {}

ZnExeResources::~ZnExeResources() {}

void *ZnExeResources::FindResourceA(char const *type, int id, int language) {
  if (!IsOpen()) return nullptr;
  // Found again on every search, not kept from the first: after Close()
  // and Open() the view lies elsewhere and a kept root would point into
  // memory that is gone.
  pResourceRoot = static_cast<unsigned char *>(GetDirectoryAddress(IMAGE_DIRECTORY_ENTRY_RESOURCE));
  ishResourceSection = IMAGE_SECTION_HEADER();
  // Without the section's header the data's address cannot be told.
  if (!GetSectionHeaderByName(&ishResourceSection, ".rsrc") || pResourceRoot == nullptr) return nullptr;
  // Only the type is cut to 16 bits; an id or language outside 0..65535
  // matches no entry.
  long const wanted[] = {static_cast<WORD>(reinterpret_cast<std::uintptr_t>(type)), id, language};
  unsigned char *directory = pResourceRoot;
  for (int level = 0; level < 2; ++level) {
    unsigned char const *entry = FindIdEntry(directory, wanted[level]);
    DWORD const offset =
        entry != nullptr ? ReadDword(entry + offsetof(IMAGE_RESOURCE_DIRECTORY_ENTRY, OffsetToData)) : 0;
    if ((offset & IMAGE_RESOURCE_DATA_IS_DIRECTORY) == 0) return nullptr;
    directory = GetAddressFromOffset(offset, sizeof(IMAGE_RESOURCE_DIRECTORY));
  }
  unsigned char const *entry = FindIdEntry(directory, wanted[2]);
  if (entry == nullptr) return nullptr;
  unsigned char const *data = GetAddressFromOffset(
      ReadDword(entry + offsetof(IMAGE_RESOURCE_DIRECTORY_ENTRY, OffsetToData)), sizeof(IMAGE_RESOURCE_DATA_ENTRY));
  if (data == nullptr) return nullptr;
  // The data entry holds a relative virtual address: the root plus that
  // address less the section's.
  std::int64_t const distance = std::int64_t{ReadDword(data + offsetof(IMAGE_RESOURCE_DATA_ENTRY, OffsetToData))} -
                                std::int64_t{ishResourceSection.VirtualAddress};
  auto const where = reinterpret_cast<std::uintptr_t>(pResourceRoot) + static_cast<std::uintptr_t>(distance);
  auto *resource = reinterpret_cast<unsigned char *>(where);
  // Even an empty resource must start inside the view.
  DWORD const size = ReadDword(data + offsetof(IMAGE_RESOURCE_DATA_ENTRY, Size));
  return InView(resource, size != 0 ? size : 1) ? resource : nullptr;
}

unsigned char *ZnExeResources::GetNamedEntryStart(unsigned char *directory) {
  return directory + sizeof(IMAGE_RESOURCE_DIRECTORY);
}

unsigned char *ZnExeResources::GetIdEntryStart(unsigned char *directory) {
  WORD const named = ReadWord(directory + offsetof(IMAGE_RESOURCE_DIRECTORY, NumberOfNamedEntries));
  return GetNamedEntryStart(directory) + named * sizeof(IMAGE_RESOURCE_DIRECTORY_ENTRY);
}

unsigned char *ZnExeResources::GetAddressFromOffset(DWORD offset, std::size_t bytes) {
  unsigned char *address = pResourceRoot + (offset & ~IMAGE_RESOURCE_DATA_IS_DIRECTORY);
  return InView(address, bytes) ? address : nullptr;
}

unsigned char *ZnExeResources::FindIdEntry(unsigned char *directory, long id) {
  if (directory == nullptr || !InView(directory, sizeof(IMAGE_RESOURCE_DIRECTORY))) return nullptr;
  unsigned char *entry = GetIdEntryStart(directory);
  WORD const count = ReadWord(directory + offsetof(IMAGE_RESOURCE_DIRECTORY, NumberOfIdEntries));
  if (!InView(entry, count * sizeof(IMAGE_RESOURCE_DIRECTORY_ENTRY))) return nullptr;
  for (WORD i = 0; i < count; ++i, entry += sizeof(IMAGE_RESOURCE_DIRECTORY_ENTRY))
    if (long{static_cast<WORD>(ReadDword(entry))} == id) return entry;
  return nullptr;
}
