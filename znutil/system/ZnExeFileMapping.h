// ZnExeFileMapping: a Windows executable (PE) file mapped into memory for
// reading and writing, with the addresses of its headers and directories.
//
//   ZnExeFileMapping image("build\\app.exe");
//   if (image.IsOpen()) {
//     IMAGE_SECTION_HEADER resources;
//     image.GetSectionHeaderByName(&resources, ".rsrc");
//   }
//
// Whatever is written into the view lands in the file. Only the 32-bit
// optional header is understood: the headers stand at fixed distances from
// the NT signature. The file is opened for reading and writing, so a file
// that may not be written cannot be opened at all, not even to be read.
//
// Each address member checks that what it points at lies inside the view
// and gives null (or 0, or false) when it does not, or when the mapping is
// closed, so that a truncated or damaged file cannot make the program read
// outside the file. On a well-formed image the results are those of a
// reader that trusts the file.
//
// Copies share the view, as the handles are shared: changes through one are
// seen through the other. The view goes away when the last object that
// shares it is closed or destroyed.
#ifndef ZNUTIL_SYSTEM_ZNEXEFILEMAPPING_H
#define ZNUTIL_SYSTEM_ZNEXEFILEMAPPING_H

#include <cstddef>

#include <znutil/platform/Export.h>
#include <znutil/platform/PeFormat.h>
#include <znutil/platform/WinTypes.h>

class ZNUTIL_API ZnExeFileMapping {
 public:
  /// Closed, with no path.
  ZnExeFileMapping();
  /// Copies the path and opens it; see IsOpen for the result.
  explicit ZnExeFileMapping(char const *path);
  /// Shares the other object's view.
  ZnExeFileMapping(ZnExeFileMapping const &other);
  ~ZnExeFileMapping();
  /// Closes this object's view, then shares the other's.
  ZnExeFileMapping &operator=(ZnExeFileMapping const &other);

  /// Replaces the path, then Open(). While open the new path is kept for a
  /// later Open() and false is returned, with the old view left in place.
  bool Open(char const *path);
  /// Maps the file at the path for reading and writing. False without a
  /// path, when already open, or when the file cannot be opened for
  /// writing or is empty.
  bool Open();
  /// Unmaps and closes if open; always true. The path is kept.
  bool Close();
  bool IsOpen() const { return pAddress != nullptr; }

  /// The first byte of the view, or null when closed.
  void *Address() const { return pAddress; }
  /// The NT signature, at the offset e_lfanew.
  void *NTSignatureAddress();
  /// The IMAGE_FILE_HEADER, 4 bytes behind the signature.
  void *PEFileHeaderAddress();
  /// The IMAGE_OPTIONAL_HEADER32, 24 bytes behind the signature.
  void *OptHeaderAddress();
  /// The section table, 248 bytes behind the signature; null unless all of
  /// NumberOfSections() headers lie in the view.
  void *SectionHeaderAddress();
  /// From the file header; 0 when it cannot be read.
  int NumberOfSections();
  /// Copies the first section header whose name equals `name` (case
  /// matters) into `header`. A name of all eight bytes has no terminator.
  bool GetSectionHeaderByName(IMAGE_SECTION_HEADER *header, char const *name);
  /// Where the data directory `index` lies in the view: through the first
  /// section whose raw data covers its relative address. Null for an index
  /// at or beyond NumberOfRvaAndSizes, or when no section covers it.
  void *GetDirectoryAddress(ZnULong index);

 protected:
  /// Frees the old copy of the path and stores a copy of `path`.
  void SetFilePath(char const *path);
  /// True when [address, address + bytes) lies inside the view.
  bool InView(void const *address, std::size_t bytes) const;

 private:
  /// The bytes at `offset` behind the NT signature, if `bytes` of them lie
  /// in the view.
  unsigned char *HeaderAt(std::size_t offset, std::size_t bytes);
  void ShareViewOf(ZnExeFileMapping const &other);
  /// Copies the first section header that `matches` accepts into `found`.
  template <typename Matches>
  bool FindSection(Matches matches, IMAGE_SECTION_HEADER *found);

  HANDLE hFile;
  HANDLE hMapping;
  void *pAddress;
  char *pFilePath;
  /// Bytes of the view.
  std::size_t nViewSize;
  /// How many objects share the view; null when closed.
  int *piViewOwners;
};

#endif  // ZNUTIL_SYSTEM_ZNEXEFILEMAPPING_H
