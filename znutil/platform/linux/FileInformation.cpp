// File facts by handle over statx, at full time resolution.
#include <znutil/platform/File.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <znutil/platform/linux/HandleObject.h>

namespace znutil {
namespace platform {
namespace {

// Seconds from 1601-01-01 to 1970-01-01, and 100 ns units in a second.
constexpr std::int64_t kEpochDifference = 11644473600;
constexpr std::int64_t kUnitsPerSecond = 10000000;

// A time before 1601 cannot be told and becomes 0.
FILETIME ToFileTime(statx_timestamp const &time) {
  std::int64_t const seconds = time.tv_sec + kEpochDifference;
  std::uint64_t const units =
      seconds < 0 ? 0 : static_cast<std::uint64_t>(seconds) * kUnitsPerSecond + time.tv_nsec / 100;
  return FILETIME{static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
}

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
