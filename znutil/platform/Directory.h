// Folders: listing, copying files, the current directory and the system
// directory, with the Windows calls' rules. Attributes and making one
// folder are in File.h.
//
//   WIN32_FIND_DATAA entry;
//   HANDLE search = FindFirstFileA("logs\\*.*", &entry);
//   if (search != INVALID_HANDLE_VALUE) {
//     do { ... entry.cFileName ... } while (FindNextFileA(search, &entry));
//     FindClose(search);
//   }
//
// Paths are in the library's form (see PathText.h). A listing gives every
// entry, "." and ".." included, with FILE_ATTRIBUTE_DIRECTORY for folders;
// the pattern "*.*" matches every name, with or without a dot. Symbolic
// links are followed. The attribute bits: FILE_ATTRIBUTE_DIRECTORY for a
// folder, FILE_ATTRIBUTE_HIDDEN for a name that starts with a dot (not "."
// and ".."), FILE_ATTRIBUTE_READONLY when the owner may not write, and
// FILE_ATTRIBUTE_NORMAL when none of these holds.
#ifndef ZNUTIL_PLATFORM_DIRECTORY_H
#define ZNUTIL_PLATFORM_DIRECTORY_H

#include <string>

#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

/// Starts a listing of the folder before the last separator of `pattern`
/// (the current one if there is none), keeping the names that match the
/// wildcards after it, and fills `data` with the first. INVALID_HANDLE_VALUE
/// when the folder cannot be read or nothing matches.
HANDLE FindFirstFileA(char const *pattern, WIN32_FIND_DATAA *data);

/// The next entry of a listing; false at the end.
bool FindNextFileA(HANDLE search, WIN32_FIND_DATAA *data);

/// Ends a listing and frees its handle.
bool FindClose(HANDLE search);

/// Copies the bytes and the mode of a file. An existing target is replaced
/// unless `failIfExists`; a file is never copied onto itself.
bool CopyFileA(char const *from, char const *to, bool failIfExists);

/// Changes the process's current directory.
bool SetCurrentDirectoryA(char const *path);

/// The folder of the global configuration file, in the library's form:
/// $ZNUTIL_SYSTEM_DIR, else $XDG_CONFIG_HOME, else $HOME/.config, made with
/// its parents if missing. Empty variables count as unset.
std::string SystemDirectory();

/// The folder for temporary files, in the library's form: $TEMP, else
/// $TMPDIR, else /tmp. Empty variables count as unset.
std::string TemporaryDirectory();

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_DIRECTORY_H
