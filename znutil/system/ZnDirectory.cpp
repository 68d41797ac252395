// ZnDirectory: the listing of one folder.
#include <znutil/system/ZnDirectory.h>

#include <znutil/platform/Directory.h>

namespace platform = znutil::platform;

ZnDirectory::ZnDirectory() : bOpen(false) {}

ZnDirectory::~ZnDirectory() { Close(); }

bool ZnDirectory::Open(ZnString const &path) {
  Close();
  fsPathName = path;
  fsPathName.NoLeadingWhiteSpace();
  fsPathName.NoTrailingWhiteSpace();
  // Only a backslash goes: a trailing slash stays, and ^ joins the pattern to it.
  int const length = fsPathName.Length();
  if (length > 0 && fsPathName[length - 1] == '\\') fsPathName.Truncate(length - 1);
  ZnString const pattern = fsPathName ^ ZnString("*.*");
  auto *entry = new ZnDirectoryFileInfo(this);
  HANDLE const search = platform::FindFirstFileA(pattern.Chars(), &entry->fdFindData);
  if (search == INVALID_HANDLE_VALUE) {
    delete entry;
    return false;
  }
  do {
    Append(entry);
    entry = new ZnDirectoryFileInfo(this);
  } while (platform::FindNextFileA(search, &entry->fdFindData));
  delete entry;
  platform::FindClose(search);
  return true;
}

void ZnDirectory::Close() {
  ZnListContext position;
  for (void *entry = GetFirst(position); entry != nullptr; entry = GetNext(position)) {
    delete static_cast<ZnDirectoryFileInfo *>(entry);
  }
  ZnDblList::Clear();
  bOpen = false;
  lcCursor = ZnListContext();
}

ZnDirectoryFileInfo *ZnDirectory::First() { return static_cast<ZnDirectoryFileInfo *>(GetFirst(lcCursor)); }

ZnDirectoryFileInfo *ZnDirectory::Next() { return static_cast<ZnDirectoryFileInfo *>(GetNext(lcCursor)); }

int ZnDirectory::Count() const { return GetCount(); }

ZnString const &ZnDirectory::GetPathName() const { return fsPathName; }
