#include <znutil/values/internal/FolderOfPath.h>

#include <algorithm>
#include <cctype>

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

std::string FolderOfPath(std::string const &path) {
  auto const last = std::find_if(path.rbegin(), path.rend(), IsSeparator);
  if (last != path.rend()) return path.substr(0, static_cast<std::size_t>(path.rend() - last));
  bool const hasDrive = path.size() >= 2 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':';
  return hasDrive ? path.substr(0, 2) : std::string();
}

void MakeFolderOfPath(std::string const &path) {
  std::string const folder = FolderOfPath(path);
  if (!folder.empty() && !Exists(folder)) CreateFolder(folder);
}

}  // namespace detail
}  // namespace znutil
