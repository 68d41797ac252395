// Atomic replacement of a file's content: a new file beside it, fsync,
// rename, then a precise stamp.
#include <znutil/platform/File.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <znutil/platform/Clock.h>
#include <znutil/platform/PathText.h>

namespace znutil {
namespace platform {

namespace {

constexpr int kMostLinks = 40;

// The folder part of a path, with its final slash; empty for a bare name.
std::string FolderOf(std::string const &path) { return path.substr(0, path.rfind('/') + 1); }

// Where a chain of symbolic links ends, even at a file that does not exist
// yet, so that the file is made there and the link stays; `path` itself
// when it is no link or the chain does not end.
std::string FollowLinks(std::string const &path) {
  std::string at = path;
  char target[PATH_MAX];
  // As many links as the kernel follows, and one more look to find the end.
  for (int hop = 0; hop <= kMostLinks; ++hop) {
    ssize_t const length = readlink(at.c_str(), target, sizeof target - 1);
    if (length < 0) return errno == EINVAL || errno == ENOENT ? at : path;
    std::string const next(target, static_cast<std::size_t>(length));
    at = next[0] == '/' ? next : FolderOf(at) + next;
  }
  return path;
}

// The file a path names, through symbolic links.
std::string ResolvedTarget(char const *path) {
  std::string const target = ToSystemPath(path);
  char resolved[PATH_MAX];
  return realpath(target.c_str(), resolved) != nullptr ? std::string(resolved) : FollowLinks(target);
}

// A new file beside `target`, made with the mode a plain creation gives
// (the umask applies), or that of the file it replaces.
int CreateSibling(std::string const &target, std::string *name) {
  static std::atomic<unsigned> counter{0};
  for (int attempt = 0; attempt < 100; ++attempt) {
    *name = target + ".tmp" + std::to_string(getpid()) + "-" + std::to_string(counter.fetch_add(1));
    int const descriptor = open(name->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor >= 0 || errno != EEXIST) return descriptor;
  }
  return -1;
}

bool WriteAll(int descriptor, void const *bytes, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    ssize_t const put = write(descriptor, static_cast<char const *>(bytes) + done, size - done);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    done += static_cast<std::size_t>(put);
  }
  return true;
}

bool FillSibling(int descriptor, std::string const &target, void const *bytes, std::size_t size) {
  struct stat old;
  if (stat(target.c_str(), &old) == 0 && fchmod(descriptor, old.st_mode & 07777) != 0) return false;
  return WriteAll(descriptor, bytes, size) && fsync(descriptor) == 0;
}

// The wall clock cut to whole 100 ns units, so that the stamp on the disk
// and the FILETIME given back are the same value.
timespec StampNow() {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  now.tv_nsec -= now.tv_nsec % 100;
  return now;
}

// Stamps the renamed file. A writer that renames after this check stamps
// later still, so the stamp is only kept while the file is still ours.
FILETIME StampAndCheck(int descriptor, std::string const &target) {
  timespec const times[2] = {{0, UTIME_OMIT}, StampNow()};
  struct stat ours, there;
  if (futimens(descriptor, times) != 0 || fstat(descriptor, &ours) != 0 || stat(target.c_str(), &there) != 0 ||
      ours.st_ino != there.st_ino || ours.st_dev != there.st_dev)
    return FILETIME{0, 0};
  return FileTimeFromUnixTime(ours.st_mtim.tv_sec, ours.st_mtim.tv_nsec);
}

void SyncFolderOf(std::string const &target) {
  std::size_t const slash = target.rfind('/');
  std::string const folder = slash == std::string::npos ? "." : slash == 0 ? "/" : target.substr(0, slash);
  int const descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

// Renaming over a device or a pipe would put a plain file in its place
// (as root, /dev/null included): only a regular file, or none, is replaced.
bool MayReplace(std::string const &target) {
  struct stat status;
  return stat(target.c_str(), &status) != 0 || S_ISREG(status.st_mode);
}

}  // namespace

bool ReplaceFileContents(char const *path, void const *bytes, std::size_t size, FILETIME *writeTime) {
  *writeTime = FILETIME{0, 0};
  if (path == nullptr) return false;
  std::string const target = ResolvedTarget(path);
  if (!MayReplace(target)) return false;
  std::string sibling;
  int const descriptor = CreateSibling(target, &sibling);
  if (descriptor < 0) return false;
  bool const replaced = FillSibling(descriptor, target, bytes, size) && rename(sibling.c_str(), target.c_str()) == 0;
  if (replaced) {
    *writeTime = StampAndCheck(descriptor, target);
    SyncFolderOf(target);
  } else {
    unlink(sibling.c_str());
  }
  close(descriptor);
  return replaced;
}

}  // namespace platform
}  // namespace znutil
