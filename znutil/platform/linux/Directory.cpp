// Folders over getcwd, chdir, mkdir and statx (the folder calls of File.h
// among them), and file copies over read and write.
#include <znutil/platform/Directory.h>
#include <znutil/platform/File.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <pwd.h>
#include <unistd.h>

#include <znutil/platform/PathText.h>
#include <znutil/platform/linux/FileStatus.h>

namespace znutil {
namespace platform {
namespace {

// The last part of a system path, trailing slashes ignored.
std::string LastPart(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  std::size_t const slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// Makes a system path's folder and every missing ancestor.
bool MakeFolders(std::string const &path) {
  for (std::size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
    if (mkdir(path.substr(0, slash).c_str(), 0777) != 0 && errno != EEXIST) return false;
  }
  return mkdir(path.c_str(), 0777) == 0 || errno == EEXIST;
}

std::string Variable(char const *name) {
  char const *value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string HomeDirectory() {
  std::string home = Variable("HOME");
  if (!home.empty()) return home;
  struct passwd entry, *found = nullptr;
  char buffer[4096];
  if (getpwuid_r(getuid(), &entry, buffer, sizeof buffer, &found) == 0 && found != nullptr) return found->pw_dir;
  return "/";
}

bool WriteAll(int descriptor, char const *bytes, ssize_t size) {
  while (size > 0) {
    ssize_t const put = write(descriptor, bytes, static_cast<std::size_t>(size));
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    bytes += put;
    size -= put;
  }
  return true;
}

bool CopyBytes(int from, int to) {
  char buffer[65536];
  for (;;) {
    ssize_t const got = read(from, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return got == 0;
    if (!WriteAll(to, buffer, got)) return false;
  }
}

// Opens the target for a copy from the file open as `from`; -1 if it cannot
// be opened or is that same file, which truncating would destroy.
int OpenCopyTarget(char const *to, bool failIfExists, struct stat const &source) {
  int const flags = O_WRONLY | O_CREAT | O_CLOEXEC | (failIfExists ? O_EXCL : 0);
  int const target = open(ToSystemPath(to).c_str(), flags, source.st_mode & 07777);
  struct stat status;
  if (target >= 0 &&
      (fstat(target, &status) != 0 || (status.st_dev == source.st_dev && status.st_ino == source.st_ino) ||
       ftruncate(target, 0) != 0)) {
    close(target);
    return -1;
  }
  return target;
}

}  // namespace

DWORD AttributesOf(struct statx const &status, char const *name) {
  DWORD attributes = 0;
  if (S_ISDIR(status.stx_mode)) attributes |= FILE_ATTRIBUTE_DIRECTORY;
  if ((status.stx_mode & S_IWUSR) == 0) attributes |= FILE_ATTRIBUTE_READONLY;
  if (name[0] == '.' && std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0) {
    attributes |= FILE_ATTRIBUTE_HIDDEN;
  }
  return attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
}

std::string CurrentDirectory() {
  char buffer[4096];
  return getcwd(buffer, sizeof buffer) != nullptr ? FromSystemPath(buffer) : std::string();
}

bool SetCurrentDirectoryA(char const *path) { return chdir(ToSystemPath(path).c_str()) == 0; }

DWORD GetFileAttributesA(char const *path) {
  if (path == nullptr) return INVALID_FILE_ATTRIBUTES;
  std::string const systemPath = ToSystemPath(path);
  struct statx status;
  if (!StatusAt(AT_FDCWD, systemPath.c_str(), 0, &status)) return INVALID_FILE_ATTRIBUTES;
  return AttributesOf(status, LastPart(systemPath).c_str());
}

bool CreateDirectoryA(char const *path) { return path != nullptr && mkdir(ToSystemPath(path).c_str(), 0777) == 0; }

bool CopyFileA(char const *from, char const *to, bool failIfExists) {
  int const source = open(ToSystemPath(from).c_str(), O_RDONLY | O_CLOEXEC);
  if (source < 0) return false;
  struct stat status;
  bool copied = false;
  if (fstat(source, &status) == 0 && !S_ISDIR(status.st_mode)) {
    int const target = OpenCopyTarget(to, failIfExists, status);
    copied = target >= 0 && CopyBytes(source, target) && fchmod(target, status.st_mode & 07777) == 0;
    if (target >= 0) copied = close(target) == 0 && copied;
  }
  close(source);
  return copied;
}

std::string SystemDirectory() {
  std::string folder = Variable("ZNUTIL_SYSTEM_DIR");
  if (folder.empty()) folder = Variable("XDG_CONFIG_HOME");
  if (folder.empty()) folder = HomeDirectory() + "/.config";
  MakeFolders(folder);
  return FromSystemPath(folder);
}

std::string TemporaryDirectory() {
  std::string folder = Variable("TEMP");
  if (folder.empty()) folder = Variable("TMPDIR");
  if (folder.empty()) folder = "/tmp";
  return FromSystemPath(folder);
}

}  // namespace platform
}  // namespace znutil
