// The three times of a file, as FILETIMEs at full 100 ns resolution.
#ifndef ZNUTIL_PLATFORM_FILETIMES_H
#define ZNUTIL_PLATFORM_FILETIMES_H

#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

struct FileTimes {
  /// The birth time where the file system keeps one, else the status
  /// change time.
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
};

/// Opens the file at `path` (library form) for reading as an existing file
/// and reads its times. False when it cannot be opened for reading or is a
/// directory, as for an open of a file by name.
bool ReadFileTimes(char const *path, FileTimes *times);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_FILETIMES_H
