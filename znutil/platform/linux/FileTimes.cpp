// File times over open and statx.
#include <znutil/platform/FileTimes.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <znutil/platform/Clock.h>
#include <znutil/platform/Path.h>

namespace znutil {
namespace platform {
namespace {

FILETIME FromStatx(statx_timestamp const &stamp) { return FileTimeFromUnixTime(stamp.tv_sec, stamp.tv_nsec); }

bool ReadDescriptorTimes(int descriptor, FileTimes *times) {
  struct statx status;
  if (statx(descriptor, "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_BTIME, &status) != 0) return false;
  if (S_ISDIR(status.stx_mode)) return false;
  bool const hasBirth = (status.stx_mask & STATX_BTIME) != 0;
  times->ftCreationTime = FromStatx(hasBirth ? status.stx_btime : status.stx_ctime);
  times->ftLastAccessTime = FromStatx(status.stx_atime);
  times->ftLastWriteTime = FromStatx(status.stx_mtime);
  return true;
}

}  // namespace

bool ReadFileTimes(char const *path, FileTimes *times) {
  // Non-blocking, so that opening a FIFO by mistake cannot hang.
  int const descriptor = open(ToSystemPath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return false;
  bool const read = ReadDescriptorTimes(descriptor, times);
  close(descriptor);
  return read;
}

}  // namespace platform
}  // namespace znutil
