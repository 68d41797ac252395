// Files over open, read, write and fstat.
#include <znutil/platform/File.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <znutil/platform/PathText.h>
#include <znutil/platform/linux/HandleObject.h>
#include <znutil/platform/linux/PosixSync.h>

namespace znutil {
namespace platform {

FileHandleObject::~FileHandleObject() { close(descriptor_); }

namespace {

int OpenFlags(DWORD access, DWORD disposition) {
  int flags = O_CLOEXEC;
  bool const read = (access & GENERIC_READ) != 0, write = (access & GENERIC_WRITE) != 0;
  flags |= read && write ? O_RDWR : write ? O_WRONLY : O_RDONLY;
  switch (disposition) {
    case CREATE_NEW: return flags | O_CREAT | O_EXCL;
    case CREATE_ALWAYS: return flags | O_CREAT | O_TRUNC;
    case OPEN_ALWAYS: return flags | O_CREAT;
    case TRUNCATE_EXISTING: return flags | O_TRUNC;
    default: return flags;
  }
}

}  // namespace

HANDLE CreateFileA(char const *path, DWORD access, DWORD disposition, DWORD flags) {
  if (path == nullptr) return INVALID_HANDLE_VALUE;
  // Opened without waiting: a named pipe with no writer would otherwise
  // hold the open (and a reader of its facts) for ever. Reads wait again.
  int const descriptor = open(ToSystemPath(path).c_str(), OpenFlags(access, disposition) | O_NONBLOCK, 0666);
  if (descriptor < 0) return INVALID_HANDLE_VALUE;
  fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
  struct stat status;
  if (fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode)) {
    close(descriptor);
    return INVALID_HANDLE_VALUE;
  }
  if ((flags & FILE_FLAG_SEQUENTIAL_SCAN) != 0) posix_fadvise(descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
  return new FileHandleObject(descriptor);
}

bool ReadFile(HANDLE file, void *buffer, DWORD size, DWORD *done) {
  *done = 0;
  int const descriptor = DescriptorOf(file);
  if (descriptor < 0) return false;
  while (*done < size) {
    ssize_t const got = read(descriptor, static_cast<char *>(buffer) + *done, size - *done);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    if (got == 0) break;
    *done += static_cast<DWORD>(got);
  }
  return true;
}

bool WriteFile(HANDLE file, void const *buffer, DWORD size, DWORD *done) {
  *done = 0;
  int const descriptor = DescriptorOf(file);
  if (descriptor < 0) return false;
  while (*done < size) {
    ssize_t const put = write(descriptor, static_cast<char const *>(buffer) + *done, size - *done);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    *done += static_cast<DWORD>(put);
  }
  return true;
}

DWORD SetFilePointer(HANDLE file, LONG distance, DWORD method) {
  int const descriptor = DescriptorOf(file);
  int const whence = method == FILE_BEGIN ? SEEK_SET : method == FILE_END ? SEEK_END : SEEK_CUR;
  off_t const position = descriptor < 0 ? -1 : lseek(descriptor, distance, whence);
  return position < 0 ? INVALID_SET_FILE_POINTER : static_cast<DWORD>(position);
}

bool GetFileSize(HANDLE file, std::uint64_t *size) {
  struct stat status;
  int const descriptor = DescriptorOf(file);
  if (descriptor < 0 || fstat(descriptor, &status) != 0) return false;
  *size = static_cast<std::uint64_t>(status.st_size);
  return true;
}

bool CloseHandle(HANDLE handle) {
  SeamSection const section;  // see BeginThread
  HandleObject *object = ObjectOf(handle);
  delete object;
  return object != nullptr;
}

}  // namespace platform
}  // namespace znutil
