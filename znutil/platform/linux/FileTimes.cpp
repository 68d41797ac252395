// File times over statx on the open descriptor.
#include <znutil/platform/FileTimes.h>

#include <znutil/platform/Clock.h>
#include <znutil/platform/linux/FileStatus.h>
#include <znutil/platform/linux/HandleObject.h>

namespace znutil {
namespace platform {
namespace {

FILETIME FromStatx(statx_timestamp const &stamp) { return FileTimeFromUnixTime(stamp.tv_sec, stamp.tv_nsec); }

}  // namespace

FileTimes TimesOf(struct statx const &status) {
  bool const hasBirth = (status.stx_mask & STATX_BTIME) != 0;
  FileTimes times;
  times.ftCreationTime = FromStatx(hasBirth ? status.stx_btime : status.stx_ctime);
  times.ftLastAccessTime = FromStatx(status.stx_atime);
  times.ftLastWriteTime = FromStatx(status.stx_mtime);
  return times;
}

bool GetFileTimes(HANDLE file, FileTimes *times) {
  int const descriptor = DescriptorOf(file);
  struct statx status;
  if (descriptor < 0 || !StatusAt(descriptor, "", AT_EMPTY_PATH, &status)) return false;
  *times = TimesOf(status);
  return true;
}

}  // namespace platform
}  // namespace znutil
