// The three times of an open file, as FILETIMEs at full 100 ns resolution:
// what GetFileInformationByHandle gives of them.
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

/// The times of the file open as `file` (from CreateFileA); false if it is
/// not an open file or its status cannot be read.
bool GetFileTimes(HANDLE file, FileTimes *times);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_FILETIMES_H
