// libFuzzer target for the executable-image readers: any bytes as a file,
// mapped, its headers, sections and directories looked up, its version
// resource found, read and stamped, and the stamp read back from the file.
//
// Input: one byte that chooses the stamp, then the file.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <unistd.h>

#include <znutil/platform/PeFormat.h>
#include <znutil/system/ZnExeResources.h>
#include <znutil/system/ZnFileInformation.h>
#include <znutil/system/ZnVersionResource.h>

namespace {

std::string const &ScratchFile() {
  static std::string const path = [] {
    char const *folder = std::getenv("TMPDIR");
    std::string pattern = std::string(folder != nullptr ? folder : "/tmp") + "/image-fuzz-XXXXXX";
    int const file = mkstemp(pattern.data());
    if (file < 0) std::abort();
    close(file);
    return pattern;
  }();
  static bool const removedAtExit = std::atexit([] { std::remove(path.c_str()); }) == 0;
  (void)removedAtExit;
  return path;
}

void WriteScratch(std::uint8_t const *data, std::size_t size) {
  FILE *file = std::fopen(ScratchFile().c_str(), "wb");
  if (file == nullptr) std::abort();
  std::fwrite(data, 1, size, file);
  std::fclose(file);
}

void LookAround(ZnExeResources &image) {
  image.NTSignatureAddress();
  image.PEFileHeaderAddress();
  image.OptHeaderAddress();
  image.SectionHeaderAddress();
  image.NumberOfSections();
  IMAGE_SECTION_HEADER header;
  image.GetSectionHeaderByName(&header, ".rsrc");
  image.GetSectionHeaderByName(&header, ".text");
  for (ZnULong index = 0; index <= IMAGE_NUMBEROF_DIRECTORY_ENTRIES; ++index) image.GetDirectoryAddress(index);
  image.FindResourceA(RT_VERSION, 2, 0x409);
  image.FindResourceA(MAKEINTRESOURCEA(6), 1, 0);
}

void ReadStrings(ZnVersionResource &version) {
  static unsigned short const kKeys[][16] = {
      {'C', 'o', 'm', 'p', 'a', 'n', 'y', 'N', 'a', 'm', 'e'},
      {'F', 'i', 'l', 'e', 'V', 'e', 'r', 's', 'i', 'o', 'n'},
      {'p', 'r', 'o', 'd', 'u', 'c', 't', 'n', 'a', 'm', 'e'},
      {0},
  };
  for (unsigned short const *key : kKeys) {
    ZnULong length;
    unsigned short const *value = version.GetString(key, &length);
    // The value is read to its end, so that a length past the block shows.
    volatile unsigned short sum = 0;
    for (ZnULong i = 0; value != nullptr && i < length; ++i) sum = sum + value[i];
  }
}

// The stamps that a byte chooses: whole, short, and out of range.
char const *const kStamps[] = {"1.2.3.4", "7", "65535.65535.65535.65535", "70000.1", "", "9.8.7.6.5", "a.b"};

void *FindVersion(ZnExeResources &image) {
  void *block = image.FindResourceA(RT_VERSION, 1, 0x409);
  return block != nullptr ? block : image.FindResourceA(RT_VERSION, 1, 0);
}

// Stamps the version found in the file; returns what it now reads, and
// where the block lies in the file (-1 for nowhere).
ZnString StampFile(std::uint8_t choice, std::ptrdiff_t *offset) {
  ZnExeResources image(ScratchFile().c_str());
  LookAround(image);
  ZnExeResources copy(image);
  auto *block = static_cast<unsigned char *>(FindVersion(copy));
  *offset = block != nullptr ? block - static_cast<unsigned char *>(image.Address()) : -1;
  ZnVersionResource version(static_cast<unsigned char *>(block));
  ReadStrings(version);
  version.GetProductVersion();
  ZnString const before = version.GetFileVersion();
  char const *stamp = kStamps[choice % (sizeof kStamps / sizeof kStamps[0])];
  version.SetFileVersion(stamp);
  version.SetProductVersion(stamp);
  ZnString const after = version.GetFileVersion();
  // No fixed part before means none after, and a stamp never takes it away.
  if ((before == NULL_STRING) != (after == NULL_STRING)) std::abort();
  return after;
}

// The version of the block at `offset` of the file, mapped afresh. The
// block is not looked up again: in a damaged file the stamp may have
// landed on the directories that lead to it.
ZnString ReadFileVersion(std::ptrdiff_t offset) {
  ZnExeResources image(ScratchFile().c_str());
  auto *start = static_cast<unsigned char *>(image.Address());
  return ZnVersionResource(offset >= 0 ? start + offset : nullptr).GetFileVersion();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
  if (size < 1) return 0;
  WriteScratch(data + 1, size - 1);
  ZnFileInformation information(ScratchFile().c_str());
  if (!information.Valid() || information.Size() != size - 1) std::abort();
  std::ptrdiff_t offset;
  ZnString const stamped = StampFile(data[0], &offset);
  // What the view said after the stamp is what the file says when mapped again.
  if (ReadFileVersion(offset) != stamped) std::abort();
  return 0;
}
