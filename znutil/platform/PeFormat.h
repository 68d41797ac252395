// The published layouts of a 32-bit Windows executable (PE) and of its
// version resource, byte for byte, with the names of the Windows headers.
//
//   auto *dos = static_cast<IMAGE_DOS_HEADER const *>(image);
//   // the NT signature "PE\0\0" stands at image + dos->e_lfanew
//
// These are plain definitions of a file format, not system types. Each
// structure is checked against its published size below. Data read from a
// file may stand at any address, so code that reads a file through them
// copies the bytes out (memcpy) rather than casting an unaligned pointer.
#ifndef ZNUTIL_PLATFORM_PEFORMAT_H
#define ZNUTIL_PLATFORM_PEFORMAT_H

#include <cstddef>
#include <cstdint>

#include <znutil/platform/WinTypes.h>

#define IMAGE_DOS_SIGNATURE 0x5A4Du     // "MZ"
#define IMAGE_NT_SIGNATURE 0x00004550u  // "PE\0\0"
#define IMAGE_NT_OPTIONAL_HDR32_MAGIC 0x10Bu
#define IMAGE_NUMBEROF_DIRECTORY_ENTRIES 16
#define IMAGE_SIZEOF_SHORT_NAME 8
#define IMAGE_DIRECTORY_ENTRY_RESOURCE 2
#define IMAGE_RESOURCE_NAME_IS_STRING 0x80000000u
#define IMAGE_RESOURCE_DATA_IS_DIRECTORY 0x80000000u
#define VS_FFI_SIGNATURE 0xFEEF04BDu

/// A numeric resource identifier passed where a name is expected.
#define MAKEINTRESOURCEA(i) (reinterpret_cast<char const *>(static_cast<std::uintptr_t>(static_cast<WORD>(i))))
/// The resource type of version information.
#define RT_VERSION MAKEINTRESOURCEA(16)

// The MS-DOS header is packed to 2 bytes in the published headers.
#pragma pack(push, 2)
/// The MS-DOS stub header; only e_magic and e_lfanew matter to a PE reader.
struct IMAGE_DOS_HEADER {
  WORD e_magic;
  WORD e_cblp;
  WORD e_cp;
  WORD e_crlc;
  WORD e_cparhdr;
  WORD e_minalloc;
  WORD e_maxalloc;
  WORD e_ss;
  WORD e_sp;
  WORD e_csum;
  WORD e_ip;
  WORD e_cs;
  WORD e_lfarlc;
  WORD e_ovno;
  WORD e_res[4];
  WORD e_oemid;
  WORD e_oeminfo;
  WORD e_res2[10];
  /// File offset of the NT signature.
  LONG e_lfanew;
};
#pragma pack(pop)

/// The COFF file header, right behind the NT signature.
struct IMAGE_FILE_HEADER {
  WORD Machine;
  WORD NumberOfSections;
  DWORD TimeDateStamp;
  DWORD PointerToSymbolTable;
  DWORD NumberOfSymbols;
  WORD SizeOfOptionalHeader;
  WORD Characteristics;
};

/// Where one table of the image lies (its relative address) and its size.
struct IMAGE_DATA_DIRECTORY {
  DWORD VirtualAddress;
  DWORD Size;
};

/// The optional header of a 32-bit image.
struct IMAGE_OPTIONAL_HEADER32 {
  WORD Magic;
  BYTE MajorLinkerVersion;
  BYTE MinorLinkerVersion;
  DWORD SizeOfCode;
  DWORD SizeOfInitializedData;
  DWORD SizeOfUninitializedData;
  DWORD AddressOfEntryPoint;
  DWORD BaseOfCode;
  DWORD BaseOfData;
  DWORD ImageBase;
  DWORD SectionAlignment;
  DWORD FileAlignment;
  WORD MajorOperatingSystemVersion;
  WORD MinorOperatingSystemVersion;
  WORD MajorImageVersion;
  WORD MinorImageVersion;
  WORD MajorSubsystemVersion;
  WORD MinorSubsystemVersion;
  DWORD Win32VersionValue;
  DWORD SizeOfImage;
  DWORD SizeOfHeaders;
  DWORD CheckSum;
  WORD Subsystem;
  WORD DllCharacteristics;
  DWORD SizeOfStackReserve;
  DWORD SizeOfStackCommit;
  DWORD SizeOfHeapReserve;
  DWORD SizeOfHeapCommit;
  DWORD LoaderFlags;
  DWORD NumberOfRvaAndSizes;
  IMAGE_DATA_DIRECTORY DataDirectory[IMAGE_NUMBEROF_DIRECTORY_ENTRIES];
};

/// One section of the image: its name, where it lies in memory and in the file.
struct IMAGE_SECTION_HEADER {
  /// Not terminated when all eight bytes are used.
  BYTE Name[IMAGE_SIZEOF_SHORT_NAME];
  union {
    DWORD PhysicalAddress;
    DWORD VirtualSize;
  } Misc;
  DWORD VirtualAddress;
  DWORD SizeOfRawData;
  DWORD PointerToRawData;
  DWORD PointerToRelocations;
  DWORD PointerToLinenumbers;
  WORD NumberOfRelocations;
  WORD NumberOfLinenumbers;
  DWORD Characteristics;
};

/// A directory of the resource tree; its named entries come first, then
/// the numbered ones.
struct IMAGE_RESOURCE_DIRECTORY {
  DWORD Characteristics;
  DWORD TimeDateStamp;
  WORD MajorVersion;
  WORD MinorVersion;
  WORD NumberOfNamedEntries;
  WORD NumberOfIdEntries;
};

/// One entry of a resource directory: a name or number, and a subdirectory or data.
struct IMAGE_RESOURCE_DIRECTORY_ENTRY {
  /// A number in the low 16 bits, or with the top bit set the offset of a
  /// name from the resource root.
  DWORD Name;
  /// With the top bit set the offset of a subdirectory, else of an
  /// IMAGE_RESOURCE_DATA_ENTRY, both from the resource root.
  DWORD OffsetToData;
};

/// A leaf of the resource tree: where the resource's bytes lie and how many.
struct IMAGE_RESOURCE_DATA_ENTRY {
  /// A relative virtual address, not an offset from the root.
  DWORD OffsetToData;
  DWORD Size;
  DWORD CodePage;
  DWORD Reserved;
};

/// The fixed part of a version resource.
struct VS_FIXEDFILEINFO {
  DWORD dwSignature;
  DWORD dwStrucVersion;
  DWORD dwFileVersionMS;
  DWORD dwFileVersionLS;
  DWORD dwProductVersionMS;
  DWORD dwProductVersionLS;
  DWORD dwFileFlagsMask;
  DWORD dwFileFlags;
  DWORD dwFileOS;
  DWORD dwFileType;
  DWORD dwFileSubtype;
  DWORD dwFileDateMS;
  DWORD dwFileDateLS;
};

static_assert(sizeof(IMAGE_DOS_HEADER) == 64, "IMAGE_DOS_HEADER is 64 bytes");
static_assert(sizeof(IMAGE_FILE_HEADER) == 20, "IMAGE_FILE_HEADER is 20 bytes");
static_assert(sizeof(IMAGE_OPTIONAL_HEADER32) == 224, "IMAGE_OPTIONAL_HEADER32 is 224 bytes");
static_assert(sizeof(IMAGE_SECTION_HEADER) == 40, "IMAGE_SECTION_HEADER is 40 bytes");
static_assert(sizeof(IMAGE_RESOURCE_DIRECTORY) == 16, "IMAGE_RESOURCE_DIRECTORY is 16 bytes");
static_assert(sizeof(IMAGE_RESOURCE_DIRECTORY_ENTRY) == 8, "IMAGE_RESOURCE_DIRECTORY_ENTRY is 8 bytes");
static_assert(sizeof(IMAGE_RESOURCE_DATA_ENTRY) == 16, "IMAGE_RESOURCE_DATA_ENTRY is 16 bytes");
static_assert(sizeof(VS_FIXEDFILEINFO) == 52, "VS_FIXEDFILEINFO is 52 bytes");
static_assert(offsetof(IMAGE_DOS_HEADER, e_lfanew) == 60, "e_lfanew is at offset 60");
static_assert(offsetof(IMAGE_OPTIONAL_HEADER32, NumberOfRvaAndSizes) == 92, "the directory count is at 92");
static_assert(offsetof(IMAGE_OPTIONAL_HEADER32, DataDirectory) == 96, "the directories start at 96");

#endif  // ZNUTIL_PLATFORM_PEFORMAT_H
