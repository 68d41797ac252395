// The registry store: a folder per root and per key, a file per value.
//
// Names become file names in lower case, with every byte other than a
// letter, a digit, space, '-', '_' or a '.' that does not lead written as
// %XX. Value files are "@" followed by the escaped name, so they never meet
// a key's folder, and temporary files start with "#". A value file holds
// the type as 4 little-endian bytes, then the value's bytes.
#include <znutil/platform/Registry.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_set>

#include <znutil/platform/linux/UserFolders.h>

namespace znutil {
namespace platform {
namespace {

struct RegistryKey {
  std::string folder;
};

struct OpenKeys {
  std::mutex lock;
  std::unordered_set<HKEY> keys;
};

// Never destroyed, so that keys closed by static destructors are still known.
OpenKeys &TheOpenKeys() {
  static OpenKeys *const keys = new OpenKeys;
  return *keys;
}

HKEY const kRoots[] = {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS};
char const *const kRootNames[] = {"HKEY_CLASSES_ROOT", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE", "HKEY_USERS"};

std::string StoreFolder() {
  std::string folder = Variable("ZNUTIL_REGISTRY_DIR");
  if (!folder.empty()) return folder;
  folder = Variable("XDG_CONFIG_HOME");
  if (folder.empty()) folder = HomeDirectory() + "/.config";
  return folder + "/znutil/registry";
}

// The root's index in kRoots, or -1.
int RootIndex(HKEY key) {
  for (int i = 0; i < 4; ++i) {
    if (key == kRoots[i]) return i;
  }
  return -1;
}

// The folder of a root or an open key; false for any other handle.
bool FolderOf(HKEY key, std::string *folder) {
  int const root = RootIndex(key);
  if (root >= 0) {
    *folder = StoreFolder() + "/" + kRootNames[root];
    return true;
  }
  OpenKeys &open = TheOpenKeys();
  std::lock_guard<std::mutex> guard(open.lock);
  if (open.keys.count(key) == 0) return false;
  *folder = static_cast<RegistryKey *>(key)->folder;
  return true;
}

bool KeptAsIs(char c, bool first) {
  return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == ' ' || c == '-' || c == '_' ||
         (c == '.' && !first);
}

std::string Escaped(std::string const &name) {
  static char const kHex[] = "0123456789ABCDEF";
  std::string escaped;
  for (std::size_t i = 0; i < name.size(); ++i) {
    char const c = (name[i] >= 'A' && name[i] <= 'Z') ? static_cast<char>(name[i] - 'A' + 'a') : name[i];
    if (KeptAsIs(c, i == 0)) {
      escaped += c;
    } else {
      unsigned char const byte = static_cast<unsigned char>(c);
      escaped += {'%', kHex[byte >> 4], kHex[byte & 15]};
    }
  }
  return escaped;
}

// `folder` followed by the names of a key path; empty names are skipped.
std::string KeyFolder(std::string folder, char const *path) {
  std::string name;
  for (char const *c = path; c != nullptr; ++c) {
    if (*c != '\\' && *c != '/' && *c != '\0') {
      name += *c;
      continue;
    }
    if (!name.empty()) folder += "/" + Escaped(name);
    name.clear();
    if (*c == '\0') break;
  }
  return folder;
}

std::string ValueFile(std::string const &folder, char const *name) {
  return folder + "/@" + Escaped(name != nullptr ? name : "");
}

LONG ErrorOf(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return ERROR_FILE_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EROFS:
      return ERROR_ACCESS_DENIED;
    case ENAMETOOLONG:
      return ERROR_FILENAME_EXCED_RANGE;
    default:
      return ERROR_GEN_FAILURE;
  }
}

// 0 when `path` is a folder, else the Windows error.
LONG FolderError(std::string const &path) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return ErrorOf(errno);
  return S_ISDIR(status.st_mode) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

HKEY NewKey(std::string const &folder) {
  HKEY const key = new RegistryKey{folder};
  OpenKeys &open = TheOpenKeys();
  std::lock_guard<std::mutex> guard(open.lock);
  open.keys.insert(key);
  return key;
}

bool ReadAll(int descriptor, std::string *bytes) {
  char buffer[4096];
  for (;;) {
    ssize_t const got = read(descriptor, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return got == 0;
    bytes->append(buffer, static_cast<std::size_t>(got));
  }
}

bool WriteAll(int descriptor, std::string const &bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    ssize_t const put = write(descriptor, bytes.data() + done, bytes.size() - done);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    done += static_cast<std::size_t>(put);
  }
  return true;
}

// The type and bytes of a value file; a file too short for its type reads
// as a missing value.
LONG ReadValue(std::string const &path, DWORD *type, std::string *bytes) {
  int const descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return ErrorOf(errno);
  bool const read = ReadAll(descriptor, bytes);
  int const error = errno;
  close(descriptor);
  if (!read) return ErrorOf(error);
  if (bytes->size() < 4 || bytes->size() - 4 > 0xFFFFFFFFu) return ERROR_FILE_NOT_FOUND;
  *type = 0;
  for (int i = 3; i >= 0; --i) *type = (*type << 8) | static_cast<unsigned char>((*bytes)[static_cast<std::size_t>(i)]);
  bytes->erase(0, 4);
  return ERROR_SUCCESS;
}

// Writes a temporary file beside the value and renames it over the value.
LONG ReplaceValue(std::string const &folder, std::string const &path, std::string const &content) {
  std::string temporary = folder + "/#XXXXXX";
  int const descriptor = mkostemp(temporary.data(), O_CLOEXEC);
  if (descriptor < 0) return ErrorOf(errno);
  bool written = WriteAll(descriptor, content) && fsync(descriptor) == 0;
  int error = errno;
  written = close(descriptor) == 0 && written;
  if (written && rename(temporary.c_str(), path.c_str()) == 0) return ERROR_SUCCESS;
  if (written) error = errno;
  unlink(temporary.c_str());
  return ErrorOf(error);
}

}  // namespace

LONG RegOpenKeyExA(HKEY key, char const *subKey, DWORD, DWORD, HKEY *result) {
  if (result == nullptr) return ERROR_INVALID_PARAMETER;
  std::string folder;
  if (!FolderOf(key, &folder)) return ERROR_INVALID_HANDLE;
  std::string const target = KeyFolder(folder, subKey);
  // A predefined root always exists, made or not.
  if (target != folder || RootIndex(key) < 0) {
    if (LONG const error = FolderError(target)) return error;
  }
  *result = NewKey(target);
  return ERROR_SUCCESS;
}

LONG RegCreateKeyExA(HKEY key, char const *subKey, DWORD, char const *, DWORD, DWORD, void *, HKEY *result,
                     DWORD *disposition) {
  if (result == nullptr) return ERROR_INVALID_PARAMETER;
  std::string folder;
  if (!FolderOf(key, &folder)) return ERROR_INVALID_HANDLE;
  std::string const target = KeyFolder(folder, subKey);
  bool const existed = FolderError(target) == ERROR_SUCCESS;
  if (!existed) {
    if (!MakeFolders(target)) return ErrorOf(errno);
    if (LONG const error = FolderError(target)) return error;
  }
  if (disposition != nullptr) *disposition = existed ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
  *result = NewKey(target);
  return ERROR_SUCCESS;
}

LONG RegQueryValueExA(HKEY key, char const *name, DWORD *, DWORD *type, BYTE *data, DWORD *size) {
  if (data != nullptr && size == nullptr) return ERROR_INVALID_PARAMETER;
  std::string folder;
  if (!FolderOf(key, &folder)) return ERROR_INVALID_HANDLE;
  DWORD storedType = 0;
  std::string bytes;
  if (LONG const error = ReadValue(ValueFile(folder, name), &storedType, &bytes)) return error;
  if (type != nullptr) *type = storedType;
  DWORD const needed = static_cast<DWORD>(bytes.size());
  bool const fits = data == nullptr || *size >= needed;
  if (data != nullptr && fits) std::memcpy(data, bytes.data(), needed);
  if (size != nullptr) *size = needed;
  return fits ? ERROR_SUCCESS : ERROR_MORE_DATA;
}

LONG RegSetValueExA(HKEY key, char const *name, DWORD, DWORD type, BYTE const *data, DWORD size) {
  if (data == nullptr && size != 0) return ERROR_INVALID_PARAMETER;
  std::string folder;
  if (!FolderOf(key, &folder)) return ERROR_INVALID_HANDLE;
  if (RootIndex(key) >= 0 && !MakeFolders(folder)) return ErrorOf(errno);
  std::string content;
  for (int i = 0; i < 4; ++i) content += static_cast<char>((type >> (8 * i)) & 0xFF);
  if (size != 0) content.append(reinterpret_cast<char const *>(data), size);
  return ReplaceValue(folder, ValueFile(folder, name), content);
}

LONG RegCloseKey(HKEY key) {
  if (RootIndex(key) >= 0) return ERROR_SUCCESS;
  {
    OpenKeys &open = TheOpenKeys();
    std::lock_guard<std::mutex> guard(open.lock);
    if (open.keys.erase(key) == 0) return ERROR_INVALID_HANDLE;
  }
  delete static_cast<RegistryKey *>(key);
  return ERROR_SUCCESS;
}

}  // namespace platform
}  // namespace znutil
