// Free functions that split paths and do small file operations.
//
//   ZnGetBaseFileFromPath("C:\\tools\\App.exe")      // "App"
//   ZnGetDirectoryFromPath("C:\\tools\\App.exe")     // "C:\tools\"
//
// The six splitting functions follow ZnString::SplitPath: the Windows rules
// of _splitpath, a drive of up to 2 characters and other parts of up to 255.
// ZnToNativePath and ZnFromNativePath carry paths across the border between
// the library's `\` form and the system's, for an application's own calls.
#ifndef ZNUTIL_SYSTEM_ZNPATHFUNCTIONS_H
#define ZNUTIL_SYSTEM_ZNPATHFUNCTIONS_H

#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

/// Name and extension.
ZNUTIL_API ZnString ZnGetFileNameFromPath(ZnString const &path);
/// Drive and directory, with the directory's trailing separator.
ZNUTIL_API ZnString ZnGetDirectoryFromPath(ZnString const &path);
/// Name without extension.
ZNUTIL_API ZnString ZnGetBaseFileFromPath(ZnString const &path);
/// Extension with its dot.
ZNUTIL_API ZnString ZnGetExtensionFromPath(ZnString const &path);
/// Drive letter and colon.
ZNUTIL_API ZnString ZnGetDriveFromPath(ZnString const &path);
/// Directory, name and extension.
ZNUTIL_API ZnString ZnRemoveDriveFromPath(ZnString const &path);

/// Copies a file's bytes and mode, replacing an existing target.
ZNUTIL_API bool ZnCopyFile(ZnString const &from, ZnString const &to);
/// Whether a file can be opened for reading: false for a folder, where
/// ZnDirectory::Exists says true.
ZNUTIL_API bool ZnDoesFileExist(ZnString const &path);
/// The folder of the global configuration file ($ZNUTIL_SYSTEM_DIR, else
/// $XDG_CONFIG_HOME, else $HOME/.config), made if missing; empty if it is
/// longer than 259 characters. The name stays as it is although the folder
/// is not a system folder (deliberate).
ZNUTIL_API ZnString ZnGetSystemDirectory();

/// The path as the system takes it, for open() or std::filesystem: every
/// `\` becomes `/`, and a leading drive prefix is dropped, as it is before
/// every call the library itself makes ("C:\a\" gives "/a/"). Trailing
/// separators stay, and a relative path stays relative.
ZNUTIL_API ZnString ZnToNativePath(ZnString const &path);
/// A path the system gave, in the library's form: every `/` becomes `\`.
/// A backslash inside a Linux name turns into a separator: such a name
/// cannot be named through the library.
ZNUTIL_API ZnString ZnFromNativePath(ZnString const &path);

#endif  // ZNUTIL_SYSTEM_ZNPATHFUNCTIONS_H
