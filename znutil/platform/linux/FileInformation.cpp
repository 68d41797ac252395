// File facts by handle over statx, at full time resolution.
#include <znutil/platform/File.h>

#include <sys/sysmacros.h>

#include <znutil/platform/Clock.h>
#include <znutil/platform/linux/FileStatus.h>
#include <znutil/platform/linux/HandleObject.h>

namespace znutil {
namespace platform {
namespace {

FILETIME ToFileTime(statx_timestamp const &time) { return FileTimeFromUnixTime(time.tv_sec, time.tv_nsec); }

}  // namespace

FileTimes TimesOf(struct statx const &status) {
  bool const born = (status.stx_mask & STATX_BTIME) != 0;
  return FileTimes{ToFileTime(born ? status.stx_btime : status.stx_ctime), ToFileTime(status.stx_atime),
                   ToFileTime(status.stx_mtime)};
}

bool GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION *information) {
  struct statx status;
  int const descriptor = DescriptorOf(file);
  if (descriptor < 0 || !StatusAt(descriptor, "", AT_EMPTY_PATH, &status)) return false;
  std::uint64_t const device = makedev(status.stx_dev_major, status.stx_dev_minor);
  FileTimes const times = TimesOf(status);
  information->dwFileAttributes = AttributesOf(status, "");
  information->ftCreationTime = times.ftCreationTime;
  information->ftLastAccessTime = times.ftLastAccessTime;
  information->ftLastWriteTime = times.ftLastWriteTime;
  information->dwVolumeSerialNumber = static_cast<DWORD>(device);
  information->nFileSizeHigh = static_cast<DWORD>(status.stx_size >> 32);
  information->nFileSizeLow = static_cast<DWORD>(status.stx_size);
  information->nNumberOfLinks = status.stx_nlink;
  information->nFileIndexHigh = static_cast<DWORD>(status.stx_ino >> 32);
  information->nFileIndexLow = static_cast<DWORD>(status.stx_ino);
  return true;
}

}  // namespace platform
}  // namespace znutil
