// libFuzzer target for path text: the path arithmetic of ZnDirectory,
// ZnString::SplitPath and MakePath, and UtilityApp::ParsePath, on any text,
// with what holds for every input checked.
//
// Input: up to three texts separated by zero bytes.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include <znutil/application/UtilityApp.h>
#include <znutil/system/ZnDirectory.h>
#include <znutil/text/ZnString.h>

namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

std::vector<std::string> Pieces(std::string const &path) {
  std::vector<std::string> pieces(1);
  for (char c : path) {
    if (IsSeparator(c))
      pieces.emplace_back();
    else
      pieces.back().push_back(c);
  }
  return pieces;
}

bool HasDrive(std::string const &path) { return path.size() >= 2 && path[1] == ':'; }

bool IsRooted(std::string const &path) {
  std::size_t const start = HasDrive(path) ? 2 : 0;
  return path.size() > start && IsSeparator(path[start]);
}

// A folded rooted path: `\` before every piece, no empty piece, no ".",
// and ".." only as the first piece (above the root, where it stays).
void CheckFolded(std::string const &path, bool drive) {
  std::string const rest = path.substr(drive ? 2 : 0);
  if (rest.empty()) return;
  if (rest[0] != '\\' || rest.find('/') != std::string::npos) std::abort();
  std::vector<std::string> const pieces = Pieces(rest.substr(1));
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (pieces[i].empty() || pieces[i] == "." || (pieces[i] == ".." && i > 0)) std::abort();
  }
}

void CheckRemoveRelativeParts(std::string const &path) {
  std::string const folded = ZnDirectory::RemoveRelativePartsFromAbsolutePath(path.c_str()).Chars();
  if (IsRooted(path)) CheckFolded(folded, HasDrive(path));
  if (ZnDirectory::RemoveRelativePartsFromAbsolutePath(folded.c_str()).Chars() != folded) std::abort();
}

void CheckAbsolute(std::string const &base, std::string const &path) {
  std::string const absolute = ZnDirectory::CreateAbsolutePath(base.c_str(), path.c_str()).Chars();
  // A path with a drive stands as it is.
  if (HasDrive(path) && absolute != ZnDirectory::UnixPathToDos(path.c_str()).Chars()) std::abort();
  CheckRemoveRelativeParts(absolute);
}

void CheckRelative(std::string const &from, std::string const &to) {
  std::string const relative = ZnDirectory::CreateRelativePath(from.c_str(), to.c_str()).Chars();
  for (char c : relative) {
    if (c >= 'A' && c <= 'Z') std::abort();
  }
  if (ZnDirectory::CreateRelativePath(from.c_str(), from.c_str()) != ".") std::abort();
}

// The pieces of a path, put together again, give the path back when none
// of them was cut to its buffer.
void CheckSplit(std::string const &path) {
  ZnString drive, dir, name, extension;
  ZnString const text(path.c_str());
  text.SplitPath(&drive, &dir, &name, &extension);
  if (drive.Length() > 3 || dir.Length() > 255 || name.Length() > 255 || extension.Length() > 255) std::abort();
  std::string const joined = std::string(drive.Chars()) + dir.Chars() + name.Chars() + extension.Chars();
  if (dir.Length() == 255 || name.Length() == 255 || extension.Length() == 255) return;
  if (joined != text.Chars()) std::abort();
  ZnString made;
  made.MakePath(drive, dir, name, extension);
  if (joined.size() < 260 && made != text) std::abort();
}

void CheckParsePath(std::string const &path) {
  std::string const parsed = UtilityApp::ParsePath(path.c_str()).Chars();
  // Without marks the path is only folded.
  if (path.find('%') == std::string::npos &&
      parsed != ZnDirectory::RemoveRelativePartsFromAbsolutePath(path.c_str()).Chars())
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
  std::string const input(reinterpret_cast<char const *>(data), size);
  std::vector<std::string> texts(1);
  for (char c : input) {
    if (c == '\0' && texts.size() < 3)
      texts.emplace_back();
    else
      texts.back().push_back(c);
  }
  texts.resize(3);
  for (std::string &text : texts) text = text.c_str();  // a later zero byte ends the text
  CheckRemoveRelativeParts(texts[0]);
  CheckAbsolute(texts[0], texts[1]);
  CheckRelative(texts[0], texts[1]);
  CheckSplit(texts[0]);
  CheckParsePath(texts[2].empty() ? texts[0] : texts[2]);
  return 0;
}
