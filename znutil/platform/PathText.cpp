#include <znutil/platform/PathText.h>

#include <cctype>
#include <vector>

namespace znutil {
namespace platform {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

bool HasDrive(char const *path) {
  return std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':';
}

// Splits at separators and folds "." and ".." (never above the root).
std::vector<std::string> FoldedParts(std::string const &path) {
  std::vector<std::string> parts;
  std::string part;
  for (std::size_t i = 0; i <= path.size(); ++i) {
    if (i < path.size() && !IsSeparator(path[i])) {
      part += path[i];
      continue;
    }
    if (part == "..") {
      if (!parts.empty()) parts.pop_back();
    } else if (!part.empty() && part != ".") {
      parts.push_back(part);
    }
    part.clear();
  }
  return parts;
}

}  // namespace

std::string ToSystemPath(char const *path) {
  if (HasDrive(path)) path += 2;
  std::string result(path);
  for (char &c : result)
    if (c == '\\') c = '/';
  return result;
}

std::string FromSystemPath(std::string path) {
  for (char &c : path)
    if (c == '/') c = '\\';
  return path;
}

std::string FullPathName(char const *path) {
  std::string drive;
  if (HasDrive(path)) {
    drive.assign(path, 2);
    path += 2;
  }
  std::string full = IsSeparator(path[0]) ? std::string(path) : CurrentDirectory() + "\\" + path;
  std::string result = drive;
  for (std::string const &part : FoldedParts(full)) result += "\\" + part;
  if (result.size() == drive.size()) result += "\\";
  // A trailing separator names the same folder and is kept, as Windows does.
  if (!full.empty() && IsSeparator(full.back()) && result.back() != '\\') result += "\\";
  return result;
}

}  // namespace platform
}  // namespace znutil
