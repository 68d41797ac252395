// Directory listings over opendir, readdir, statx and fnmatch.
#include <znutil/platform/Directory.h>

#include <cstring>
#include <dirent.h>
#include <fnmatch.h>

#include <znutil/platform/PathText.h>
#include <znutil/platform/linux/FileStatus.h>
#include <znutil/platform/linux/HandleObject.h>

namespace znutil {
namespace platform {
namespace {

// One listing in progress: the open folder and the wildcards of the names.
class FindHandleObject final : public HandleObject {
 public:
  FindHandleObject(DIR *folder, std::string names) : folder_(folder), names_(std::move(names)) {}
  ~FindHandleObject() override { closedir(folder_); }

  // The next entry whose name matches, or false at the end.
  bool Next(WIN32_FIND_DATAA *data) {
    while (dirent const *entry = readdir(folder_)) {
      if (Matches(entry->d_name) && Describe(entry->d_name, data)) return true;
    }
    return false;
  }

 private:
  // "*.*" takes every name, also one without a dot, as on Windows.
  bool Matches(char const *name) const { return names_ == "*.*" || fnmatch(names_.c_str(), name, FNM_NOESCAPE) == 0; }

  // False for an entry that went away since it was read.
  bool Describe(char const *name, WIN32_FIND_DATAA *data) const {
    struct statx status;
    int const folder = dirfd(folder_);
    if (!StatusAt(folder, name, 0, &status) && !StatusAt(folder, name, AT_SYMLINK_NOFOLLOW, &status)) return false;
    std::memset(data, 0, sizeof *data);
    data->dwFileAttributes = AttributesOf(status, name);
    FileTimes const times = TimesOf(status);
    data->ftCreationTime = times.ftCreationTime;
    data->ftLastAccessTime = times.ftLastAccessTime;
    data->ftLastWriteTime = times.ftLastWriteTime;
    if (!S_ISDIR(status.stx_mode)) {
      data->nFileSizeHigh = static_cast<DWORD>(status.stx_size >> 32);
      data->nFileSizeLow = static_cast<DWORD>(status.stx_size);
    }
    std::strncpy(data->cFileName, name, sizeof data->cFileName - 1);
    return true;
  }

  DIR *folder_;
  std::string names_;
};

FindHandleObject *SearchOf(HANDLE search) { return dynamic_cast<FindHandleObject *>(ObjectOf(search)); }

}  // namespace

HANDLE FindFirstFileA(char const *pattern, WIN32_FIND_DATAA *data) {
  std::string const systemPattern = ToSystemPath(pattern);
  std::size_t const slash = systemPattern.rfind('/');
  std::string const folder = slash == std::string::npos ? "." : slash == 0 ? "/" : systemPattern.substr(0, slash);
  DIR *const opened = opendir(folder.c_str());
  if (opened == nullptr) return INVALID_HANDLE_VALUE;
  auto *search = new FindHandleObject(opened, systemPattern.substr(slash + 1));
  if (search->Next(data)) return search;
  delete search;
  return INVALID_HANDLE_VALUE;
}

bool FindNextFileA(HANDLE search, WIN32_FIND_DATAA *data) {
  FindHandleObject *const listing = SearchOf(search);
  return listing != nullptr && listing->Next(data);
}

bool FindClose(HANDLE search) {
  FindHandleObject *const listing = SearchOf(search);
  delete listing;
  return listing != nullptr;
}

}  // namespace platform
}  // namespace znutil
