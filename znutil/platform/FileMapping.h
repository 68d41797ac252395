// Files mapped into memory for reading and writing: CreateFileMappingA,
// MapViewOfFile and UnmapViewOfFile over the whole file.
//
//   HANDLE file = CreateFileA(path, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
//   HANDLE mapping = CreateFileMappingA(file);
//   std::size_t size;
//   auto *bytes = static_cast<unsigned char *>(MapViewOfFile(mapping, &size));
//   bytes[0] = 'M';                  // lands in the file
//   UnmapViewOfFile(bytes);
//   CloseHandle(mapping);
//   CloseHandle(file);
//
// A view is shared with the file: every view of one file, in this process
// or another, sees the same bytes. The seam remembers its views, so that
// code handed a pointer into one can learn where that view ends.
#ifndef ZNUTIL_PLATFORM_FILEMAPPING_H
#define ZNUTIL_PLATFORM_FILEMAPPING_H

#include <cstddef>

#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

/// A read-write mapping of the whole of an open file; null on failure, and
/// for an empty file, as on Windows. The mapping keeps the file open.
HANDLE CreateFileMappingA(HANDLE file);

/// Maps the whole file behind `mapping` for reading and writing; `*size`
/// receives the bytes of the view. Null on failure.
void *MapViewOfFile(HANDLE mapping, std::size_t *size);

/// Unmaps a view from MapViewOfFile; false for any other address.
bool UnmapViewOfFile(void *view);

/// The end of the mapped view that holds `address`, or null when no view
/// holds it.
void const *MappedViewEnd(void const *address);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_FILEMAPPING_H
