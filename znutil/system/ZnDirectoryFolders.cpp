// ZnDirectory's folder operations: the current directory, existence,
// creating and copying folders, and the folder dialog.
#include <znutil/system/ZnDirectory.h>

#include <znutil/platform/Directory.h>
#include <znutil/platform/File.h>
#include <znutil/platform/PathText.h>
#include <znutil/platform/UserInterface.h>
#include <znutil/system/ZnPathFunctions.h>
#include <znutil/system/internal/BufferText.h>
#include <znutil/text/ZnStringList.h>

namespace platform = znutil::platform;

namespace {

// The buffer of the original GetCurrentDirectoryA call.
std::size_t const kCurrentDirectoryBuffer = 511;

bool IsFolder(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

// The backslash behind which CreateFolder starts making folders: past a
// root separator at the start or after a drive.
int FirstFolderEnd(ZnString const &path) {
  int const first = path.HaveCharacter('\\');
  bool const isRoot = first == 0 || (first > 0 && path[first - 1] == ':');
  return isRoot ? path.HaveCharacter('\\', first + 1) : first;
}

}  // namespace

ZnString ZnDirectory::CurrentDirectory() {
  return znutil::detail::TextWithin(platform::CurrentDirectory(), kCurrentDirectoryBuffer);
}

bool ZnDirectory::SetCurrentDirectoryA(ZnString const &path) { return platform::SetCurrentDirectoryA(path.Chars()); }

bool ZnDirectory::Exists(ZnString const &path) {
  ZnString target(path);
  StripTrailingDirChar(target);
  return platform::GetFileAttributesA(target.Chars()) != INVALID_FILE_ATTRIBUTES;
}

bool ZnDirectory::CreateFolder(ZnString const &path, ZnStringList *created) {
  ZnString folder = UnixPathToDos(path);
  if (folder.Length() == 0 || folder[folder.Length() - 1] != '\\') folder << '\\';
  if (created != nullptr) created->Clear();
  if (Exists(folder)) return true;
  for (int end = FirstFolderEnd(folder); end >= 0; end = folder.HaveCharacter('\\', end + 1)) {
    ZnString const part = folder.LeftString(end);
    if (Exists(part)) continue;
    if (!platform::CreateDirectoryA(part.Chars())) return false;
    if (created != nullptr) created->Add(part);
  }
  return true;
}

bool ZnDirectory::Copy(ZnString const &subfolder, ZnString const &sourceRoot, ZnString const &targetRoot) {
  ZnString const source = sourceRoot + subfolder, target = targetRoot + subfolder;
  if (!Exists(target) && !CreateFolder(target, nullptr)) return false;
  if (!Exists(source)) return false;
  WIN32_FIND_DATAA entry;
  HANDLE const search = platform::FindFirstFileA((source ^ ZnString("*.*")).Chars(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    platform::MessageBoxA(nullptr, "No files in source folder!", nullptr, MB_ICONERROR);
    return true;
  }
  bool copied = true;
  do {
    if (!IsFolder(entry.dwFileAttributes)) {
      ZnString const name(entry.cFileName);
      copied = ZnCopyFile(source ^ name, target ^ name);
    }
  } while (copied && platform::FindNextFileA(search, &entry));
  // The search is closed on every path, where the original left it open.
  platform::FindClose(search);
  return copied;
}

bool ZnDirectory::CopyFolder(ZnString const &source, ZnString const &target, bool recursive) {
  if (!Exists(source)) return false;
  if (!Exists(target) && !CreateFolder(target, nullptr)) return false;
  ZnDirectory folder;
  if (!folder.Open(source)) return false;
  for (ZnDirectoryFileInfo *entry = folder.First(); entry != nullptr; entry = folder.Next()) {
    ZnString const name = entry->GetFileName();
    if (name == "." || name == "..") continue;
    // Single results are not looked at: deliberate.
    if (!IsFolder(entry->QueryAttributes()))
      ZnCopyFile(entry->GetFilePath(), target ^ name);
    else if (recursive)
      CopyFolder(entry->GetFilePath(), target ^ name, true);
  }
  return true;
}

ZnString ZnDirectory::SelectDirectory(HWND owner, ZnString const &initial) {
  ZnString const remembered = CurrentDirectory();
  if (initial != NULL_STRING) SetCurrentDirectoryA(initial);
  // The dialog makes the folder the user went to current, so that is the answer.
  ZnString const chosen = platform::GetOpenFileNameA(owner) == 1 ? CurrentDirectory() : ZnString();
  SetCurrentDirectoryA(remembered);
  return chosen;
}
