// The status of a file by statx, shared by the open-file times and the
// directory listing so that both report the same times.
#ifndef ZNUTIL_PLATFORM_LINUX_FILESTATUS_H
#define ZNUTIL_PLATFORM_LINUX_FILESTATUS_H

#include <fcntl.h>
#include <sys/stat.h>

#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

/// statx of `path` relative to the folder `directory` (AT_FDCWD for the
/// current one; an empty path with AT_EMPTY_PATH for `directory` itself),
/// asking for the birth time too.
inline bool StatusAt(int directory, char const *path, int flags, struct statx *status) {
  return statx(directory, path, flags, STATX_BASIC_STATS | STATX_BTIME, status) == 0;
}

/// The times of a file in 100 ns units since 1601.
struct FileTimes {
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
};

/// The three times of a status: creation is the birth time where the file
/// system keeps one, else the status change time.
FileTimes TimesOf(struct statx const &status);

/// The Windows attribute bits of a status and the entry's name: a folder,
/// a name that starts with a dot (hidden), no write permission for the
/// owner (read-only), or none of these (normal).
DWORD AttributesOf(struct statx const &status, char const *name);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_LINUX_FILESTATUS_H
