// Files by handle, with the Windows calls' rules: CreateFileA opens or
// creates, ReadFile and WriteFile move whole buffers, CloseHandle closes.
//
// Paths are in the library's form (see PathText.h). Share modes are
// advisory and not enforced. A directory cannot be opened as a file.
#ifndef ZNUTIL_PLATFORM_FILE_H
#define ZNUTIL_PLATFORM_FILE_H

#include <cstdint>

#include <znutil/platform/WinTypes.h>

#define GENERIC_READ 0x80000000u
#define GENERIC_WRITE 0x40000000u
#define CREATE_NEW 1u
#define CREATE_ALWAYS 2u
#define OPEN_EXISTING 3u
#define OPEN_ALWAYS 4u
#define TRUNCATE_EXISTING 5u

namespace znutil {
namespace platform {

/// Opens `path`; INVALID_HANDLE_VALUE on failure. `disposition` is one of
/// CREATE_NEW ... TRUNCATE_EXISTING; CREATE_ALWAYS truncates.
HANDLE CreateFileA(char const *path, DWORD access, DWORD disposition);

/// Reads up to `size` bytes; `*done` receives what was read (0 at the end).
bool ReadFile(HANDLE file, void *buffer, DWORD size, DWORD *done);

/// Writes `size` bytes; `*done` receives what was written.
bool WriteFile(HANDLE file, void const *buffer, DWORD size, DWORD *done);

/// The size of an open file in bytes.
bool GetFileSize(HANDLE file, std::uint64_t *size);

/// Closes a handle from this seam.
bool CloseHandle(HANDLE handle);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_FILE_H
