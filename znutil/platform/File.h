// Files by handle, with the Windows calls' rules: CreateFileA opens or
// creates, ReadFile and WriteFile move whole buffers, SetFilePointer moves
// the position, CloseHandle closes. Folders: GetFileAttributesA tells what a
// path names, CreateDirectoryA makes one folder.
//
// Paths are in the library's form (see PathText.h). Share modes are
// advisory and not enforced. A directory cannot be opened as a file.
// Exported: a client that wraps a handle in a ZnFileStream opens it here.
#ifndef ZNUTIL_PLATFORM_FILE_H
#define ZNUTIL_PLATFORM_FILE_H

#include <cstddef>
#include <cstdint>

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

#define GENERIC_READ 0x80000000u
#define GENERIC_WRITE 0x40000000u
#define CREATE_NEW 1u
#define CREATE_ALWAYS 2u
#define OPEN_EXISTING 3u
#define OPEN_ALWAYS 4u
#define TRUNCATE_EXISTING 5u
#define FILE_FLAG_SEQUENTIAL_SCAN 0x08000000u
#define FILE_BEGIN 0u
#define FILE_CURRENT 1u
#define FILE_END 2u
#define INVALID_SET_FILE_POINTER 0xFFFFFFFFu

namespace znutil {
namespace platform {

/// Opens `path`; INVALID_HANDLE_VALUE on failure. `disposition` is one of
/// CREATE_NEW ... TRUNCATE_EXISTING; CREATE_ALWAYS truncates.
/// FILE_FLAG_SEQUENTIAL_SCAN in `flags` advises the system of a sequential
/// read; other flags are ignored.
ZNUTIL_API HANDLE CreateFileA(char const *path, DWORD access, DWORD disposition, DWORD flags = FILE_ATTRIBUTE_NORMAL);

/// Reads up to `size` bytes; `*done` receives what was read (0 at the end).
ZNUTIL_API bool ReadFile(HANDLE file, void *buffer, DWORD size, DWORD *done);

/// Writes `size` bytes; `*done` receives what was written.
ZNUTIL_API bool WriteFile(HANDLE file, void const *buffer, DWORD size, DWORD *done);

/// Moves the position by `distance` from FILE_BEGIN, FILE_CURRENT or
/// FILE_END; returns the low 32 bits of the new position, or
/// INVALID_SET_FILE_POINTER on failure (a position before the start fails).
ZNUTIL_API DWORD SetFilePointer(HANDLE file, LONG distance, DWORD method);

/// The size of an open file in bytes.
ZNUTIL_API bool GetFileSize(HANDLE file, std::uint64_t *size);

/// Attributes, times, size, link count and identity of an open file. The
/// attributes are FILE_ATTRIBUTE_DIRECTORY for a folder, else
/// FILE_ATTRIBUTE_READONLY when the owner may not write, else
/// FILE_ATTRIBUTE_NORMAL. The creation time is the birth time where the file
/// system keeps one, else the status change time.
bool GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION *information);

/// Closes a handle from this seam.
ZNUTIL_API bool CloseHandle(HANDLE handle);

/// The attribute bits of what `path` names (links followed), as a directory
/// listing gives them (see Directory.h), or INVALID_FILE_ATTRIBUTES when it
/// names nothing.
ZNUTIL_API DWORD GetFileAttributesA(char const *path);

/// Makes one folder; its parent must exist. False if it cannot be made or
/// already exists.
ZNUTIL_API bool CreateDirectoryA(char const *path);
/// Replaces the whole content of the file at `path` at once: the bytes go
/// to a new file beside it, which is flushed to the disk and renamed over
/// the old one, so that a reader sees the old content or the new, never a
/// part. A symbolic link is written through; an existing file's mode is
/// kept. The new file is stamped with the wall clock at 100 ns, taken after
/// the rename. `*writeTime` receives that stamp, or zero when another
/// writer replaced the file again at once (so that its content is read).
/// False, and the old file untouched, when it cannot be written; a path
/// that names a device, a pipe or a socket is never replaced.
bool ReplaceFileContents(char const *path, void const *bytes, std::size_t size, FILETIME *writeTime);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_FILE_H
