// ZnDirectory's path arithmetic: pure text, no file is touched.
#include <znutil/system/ZnDirectory.h>

#include <algorithm>

#include <znutil/application/UtilityApp.h>
#include <znutil/system/ZnPathFunctions.h>
#include <znutil/text/ZnStringList.h>

namespace {

char const kSeparators[] = "/\\";

ZnString Replaced(ZnString const &path, char from, char to) {
  ZnString result(path);
  for (int i = 0; i < result.Length(); ++i)
    if (result[i] == from) result.SetCharacter(i, to);
  return result;
}

// Each part followed by a backslash.
void AppendParts(ZnString &text, ZnStringList const &parts) {
  ZnListContext position;
  for (ZnString *part = parts.First(position); part != nullptr; part = parts.Next(position)) text << *part << '\\';
}

// Rule 3 of CreateAbsolutePath: leading ".." parts of path climb base.
ZnString ClimbedPath(ZnString const &base, ZnString const &path) {
  ZnStringList baseParts, pathParts;
  base.Tokenize(kSeparators, baseParts);
  path.Tokenize(kSeparators, pathParts);
  ZnListContext position;
  ZnString const *last = baseParts.Last(position);
  if (last != nullptr && *last == NULL_STRING) baseParts.DeleteLast();  // from a trailing separator
  int climbs = 0;
  for (ZnString const *part = pathParts.First(position); part != nullptr && *part == "..";
       part = pathParts.First(position)) {
    pathParts.DeleteFirst();
    ++climbs;
  }
  // The first part, normally the drive, always survives.
  climbs = std::min(climbs, baseParts.GetCount() - 1);
  for (int i = 0; i < climbs; ++i) baseParts.DeleteLast();
  ZnString result;
  AppendParts(result, baseParts);
  AppendParts(result, pathParts);
  // A bare drive keeps its root separator: "C:\".
  bool const bareRoot = baseParts.GetCount() == 1 && pathParts.GetCount() == 0;
  if (!bareRoot && result.Length() > 0) result.Truncate(result.Length() - 1);
  return result;
}

ZnString AbsoluteLowerCase(ZnString const &path) {
  // A copy of the characters: this may run on several threads at once, and
  // string counts are plain.
  ZnString const startup(UtilityApp::StartupDir().Chars());
  ZnString result = ZnDirectory::CreateAbsolutePath(startup, path).ToLower();
  ZnDirectory::StripTrailingDirChar(result);
  return result;
}

int CountSeparatorsFrom(ZnString const &text, int start) {
  int count = 0;
  for (int i = start; i < text.Length(); ++i) count += ZnDirectory::IsDirSplitChar(text[i]) ? 1 : 0;
  return count;
}

// Just behind the last separator at or before `end`; 0 if there is none.
int StartOfName(ZnString const &text, int end) {
  for (int i = std::min(end, text.Length() - 1); i >= 0; --i)
    if (ZnDirectory::IsDirSplitChar(text[i])) return i + 1;
  return 0;
}

}  // namespace

bool ZnDirectory::IsDirSplitChar(char c) { return c == '/' || c == '\\'; }

void ZnDirectory::StripTrailingDirChar(ZnString &path) {
  int const length = path.Length();
  if (length > 0 && IsDirSplitChar(path[length - 1])) path.Truncate(length - 1);
}

ZnString ZnDirectory::DosPathToUnix(ZnString const &path) { return Replaced(path, '\\', '/'); }

ZnString ZnDirectory::UnixPathToDos(ZnString const &path) { return Replaced(path, '/', '\\'); }

ZnString ZnDirectory::CreateAbsolutePath(ZnString const &base, ZnString const &path) {
  ZnString const dosBase = UnixPathToDos(base), dosPath = UnixPathToDos(path);
  // A drive-relative "D:x" stands as it is too: the colon decides.
  if (dosPath[1] == ':') return dosPath;
  if (dosPath[0] == '\\') return ZnGetDriveFromPath(dosBase) + dosPath;
  if (dosPath[0] == '.' && dosPath[1] == '.') return ClimbedPath(dosBase, dosPath);
  if (dosPath[0] == '.' && dosPath[1] == '\\') return dosBase ^ dosPath.RightString(dosPath.Length() - 1);
  // "." alone has no separator after it and is joined as a name: deliberate.
  return dosBase ^ dosPath;
}

ZnString ZnDirectory::CreateRelativePath(ZnString const &from, ZnString const &to) {
  ZnString const fromPath = AbsoluteLowerCase(from), toPath = AbsoluteLowerCase(to);
  if (fromPath == toPath) return ZnString(".");
  if (fromPath[0] != toPath[0]) return toPath;  // no way across drives
  // Behind a drive; a path without one (the Linux form) is compared whole,
  // or a difference in its first folder's first character would be missed.
  int i = fromPath[1] == ':' || toPath[1] == ':' ? 2 : 0;
  while (i < fromPath.Length() && i < toPath.Length() && fromPath[i] == toPath[i]) ++i;
  int j = i;
  bool const fromLeft = i < fromPath.Length(), toLeft = j < toPath.Length();
  int steps;
  if (fromLeft && !toLeft && IsDirSplitChar(fromPath[i])) {
    steps = CountSeparatorsFrom(fromPath, i);  // to is an ancestor: the tail stays empty
  } else if (!fromLeft && toLeft && IsDirSplitChar(toPath[j])) {
    steps = 0;  // from is an ancestor
    ++j;
  } else {
    // The common part stops inside a name, which is undone.
    steps = 1 + CountSeparatorsFrom(fromPath, i);
    j = StartOfName(toPath, j);
  }
  ZnString result(steps == 0 ? ".\\" : "");
  for (int step = 0; step < steps; ++step) result << "..\\";
  return result << toPath.RightString(toPath.Length() - j);
}

ZnString ZnDirectory::RemoveRelativePartsFromAbsolutePath(ZnString const &path) {
  ZnString rest = UnixPathToDos(path), drive;
  if (rest[1] == ':') {
    // Cut by text rather than by SplitPath, whose pieces stop at 255
    // characters: a longer path would lose its end. Same result otherwise.
    drive = rest.LeftString(2);
    rest = rest.RightString(rest.Length() - 2);
  }
  if (rest[0] != '\\') return drive + rest;
  ZnStringList parts, kept;
  rest.Tokenize(kSeparators, parts);
  ZnListContext position;
  for (ZnString const *part = parts.First(position); part != nullptr; part = parts.Next(position)) {
    if (*part == NULL_STRING || *part == ".") continue;
    // ".." above the root has nothing to remove and stays.
    if (*part == ".." && kept.GetCount() > 0)
      kept.DeleteLast();
    else
      kept.Add(*part);
  }
  for (ZnString const *part = kept.First(position); part != nullptr; part = kept.Next(position)) drive << '\\' << *part;
  return drive;
}
