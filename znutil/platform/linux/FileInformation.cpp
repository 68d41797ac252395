// File facts by handle over statx, at full time resolution.
#include <znutil/platform/File.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <znutil/platform/Clock.h>
#include <znutil/platform/linux/HandleObject.h>

namespace znutil {
namespace platform {
namespace {

FILETIME ToFileTime(statx_timestamp const &time) { return FileTimeFromUnixTime(time.tv_sec, time.tv_nsec); }

DWORD AttributesOf(unsigned mode) {
  if (S_ISDIR(mode)) return FILE_ATTRIBUTE_DIRECTORY;
  return (mode & S_IWUSR) == 0 ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL;
}

}  // namespace

bool GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION *information) {
  struct statx status;
  int const descriptor = DescriptorOf(file);
  if (descriptor < 0 || statx(descriptor, "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
    return false;
  bool const born = (status.stx_mask & STATX_BTIME) != 0;
  std::uint64_t const device = makedev(status.stx_dev_major, status.stx_dev_minor);
  information->dwFileAttributes = AttributesOf(status.stx_mode);
  information->ftCreationTime = ToFileTime(born ? status.stx_btime : status.stx_ctime);
  information->ftLastAccessTime = ToFileTime(status.stx_atime);
  information->ftLastWriteTime = ToFileTime(status.stx_mtime);
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
