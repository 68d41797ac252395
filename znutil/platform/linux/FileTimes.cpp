// File times over statx on the open descriptor.
#include <znutil/platform/FileTimes.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <znutil/platform/Clock.h>
#include <znutil/platform/linux/HandleObject.h>

namespace znutil {
namespace platform {
namespace {

FILETIME FromStatx(statx_timestamp const &stamp) { return FileTimeFromUnixTime(stamp.tv_sec, stamp.tv_nsec); }

}  // namespace

bool GetFileTimes(HANDLE file, FileTimes *times) {
  int const descriptor = DescriptorOf(file);
  struct statx status;
  if (descriptor < 0 || statx(descriptor, "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_BTIME, &status) != 0) {
    return false;
  }
  bool const hasBirth = (status.stx_mask & STATX_BTIME) != 0;
  times->ftCreationTime = FromStatx(hasBirth ? status.stx_btime : status.stx_ctime);
  times->ftLastAccessTime = FromStatx(status.stx_atime);
  times->ftLastWriteTime = FromStatx(status.stx_mtime);
  return true;
}

}  // namespace platform
}  // namespace znutil
