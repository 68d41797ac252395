#include <znutil/values/internal/FolderOfPath.h>

#include <algorithm>
#include <string>

#include <znutil/platform/File.h>

namespace znutil {
namespace detail {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

// A path names something, file or folder; one trailing separator is
// ignored.
bool Exists(std::string path) {
  if (!path.empty() && IsSeparator(path.back())) path.pop_back();
  return platform::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// Makes each missing folder from the outermost in; stops at the first that
// cannot be made.
void CreateFolder(std::string folder) {
  std::replace(folder.begin(), folder.end(), '/', '\\');
  if (folder.back() != '\\') folder.push_back('\\');
  if (Exists(folder)) return;
  std::size_t separator = folder.find('\\');
  // The separator of the root, alone or after a drive, is not a folder.
  if (separator == 0 || folder[separator - 1] == ':') separator = folder.find('\\', separator + 1);
  for (; separator != std::string::npos; separator = folder.find('\\', separator + 1)) {
    std::string const part = folder.substr(0, separator);
    if (!Exists(part) && !platform::CreateDirectoryA(part.c_str())) return;
  }
}

}  // namespace

void MakeFolderOfPath(ZnString const &path) {
  ZnString drive, directory;
  path.SplitPath(&drive, &directory, nullptr, nullptr);
  std::string const folder = static_cast<char const *>(drive + directory);
  if (!folder.empty() && !Exists(folder)) CreateFolder(folder);
}

}  // namespace detail
}  // namespace znutil
