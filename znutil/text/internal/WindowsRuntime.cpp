#include <znutil/text/internal/WindowsRuntime.h>

#include <cctype>
#include <cstring>
#include <string>

namespace znutil {
namespace detail {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

// Copies [begin, end) into a buffer of `size`, cut to fit.
void CopyPiece(char *target, int size, char const *begin, char const *end) {
  if (target == nullptr) return;
  std::size_t length = static_cast<std::size_t>(end - begin);
  if (length > static_cast<std::size_t>(size - 1)) length = static_cast<std::size_t>(size - 1);
  std::memcpy(target, begin, length);
  target[length] = '\0';
}

}  // namespace

int StrICmp(char const *left, char const *right) {
  for (;; ++left, ++right) {
    int const l = std::tolower(static_cast<unsigned char>(*left));
    int const r = std::tolower(static_cast<unsigned char>(*right));
    if (l != r || l == 0) return l - r;
  }
}

void SplitPath(char const *path, char *drive, char *dir, char *name, char *ext) {
  char const *rest = path;
  if (rest[0] != '\0' && rest[1] == ':') rest += 2;
  CopyPiece(drive, kMaxDrive, path, rest);
  char const *end = rest + std::strlen(rest);
  char const *base = rest;
  for (char const *p = rest; p < end; ++p)
    if (IsSeparator(*p)) base = p + 1;
  CopyPiece(dir, kMaxDir, rest, base);
  char const *dot = end;
  for (char const *p = base; p < end; ++p)
    if (*p == '.') dot = p;
  CopyPiece(name, kMaxName, base, dot);
  CopyPiece(ext, kMaxExt, dot, end);
}

void MakePath(char *path, char const *drive, char const *dir, char const *name, char const *ext) {
  std::string result;
  if (drive != nullptr && drive[0] != '\0') {
    result += drive[0];
    result += ':';
  }
  if (dir != nullptr && dir[0] != '\0') {
    result += dir;
    if (!IsSeparator(result.back())) result += '\\';
  }
  if (name != nullptr) result += name;
  if (ext != nullptr && ext[0] != '\0') {
    if (ext[0] != '.') result += '.';
    result += ext;
  }
  CopyPiece(path, kMaxPath, result.data(), result.data() + result.size());
}

}  // namespace detail
}  // namespace znutil
