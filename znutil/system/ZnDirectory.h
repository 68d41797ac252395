// ZnDirectory: a snapshot listing of one folder, and the library's path
// arithmetic and folder operations as static members.
//
//   ZnDirectory folder;
//   if (folder.Open("C:\\logs"))
//     for (ZnDirectoryFileInfo *entry = folder.First(); entry != nullptr; entry = folder.Next())
//       Show(entry->GetFilePath());
//   ZnString const up = ZnDirectory::CreateAbsolutePath("C:\\a\\b", "..\\c");   // C:\a\c
//
// Paths are Windows path text: an optional drive letter and colon, `/` and
// `\` both accepted, `\` in results. The path arithmetic is pure text and
// touches no file. Several of its results look odd and are deliberate: they
// are marked where they are declared.
#ifndef ZNUTIL_SYSTEM_ZNDIRECTORY_H
#define ZNUTIL_SYSTEM_ZNDIRECTORY_H

#include <znutil/containers/ZnDblList.h>
#include <znutil/containers/ZnListContext.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/system/ZnDirectoryFileInfo.h>
#include <znutil/text/ZnString.h>

class ZnStringList;

class ZNUTIL_API ZnDirectory : public ZnDblList {
 public:
  /// The list operations stay reachable beside the static Copy below.
  using ZnDblList::Copy;

  /// An empty list.
  ZnDirectory();
  /// Close.
  ~ZnDirectory() override;

  /// Lists every entry of the folder, "." and ".." included, in the order
  /// the platform gives them. The path is trimmed and loses one trailing
  /// `\`; a trailing `/` stays (deliberate) and the pattern is joined to it
  /// by operator^. False, with an empty list, if the folder cannot be read.
  bool Open(ZnString const &path);
  /// Deletes every entry and resets the cursor.
  void Close();
  /// Moves the cursor to the first entry; null when empty.
  ZnDirectoryFileInfo *First();
  /// Advances the cursor; null at the end, after it, and before any First.
  ZnDirectoryFileInfo *Next();
  /// The number of entries.
  int Count() const;
  /// The folder path of the latest Open, trimmed.
  ZnString const &GetPathName() const;

  /// The current directory; empty if it is longer than 510 characters.
  static ZnString CurrentDirectory();
  static bool SetCurrentDirectoryA(ZnString const &path);
  /// True for `/` and `\`.
  static bool IsDirSplitChar(char c);
  /// Removes one trailing `/` or `\`, if there is one.
  static void StripTrailingDirChar(ZnString &path);
  /// Every `\` becomes `/`.
  static ZnString DosPathToUnix(ZnString const &path);
  /// Every `/` becomes `\`.
  static ZnString UnixPathToDos(ZnString const &path);

  /// Whether a file or a folder exists at path; one trailing separator is
  /// ignored. False for an empty path.
  static bool Exists(ZnString const &path);
  /// Makes the folder and every missing ancestor. `created`, when given, is
  /// cleared and receives each folder made, outermost first. A failure stops
  /// at once and leaves what was made.
  static bool CreateFolder(ZnString const &path, ZnStringList *created);
  /// Copies the plain files (not the folders) of sourceRoot + subfolder to
  /// targetRoot + subfolder, concatenated with no separator added
  /// (deliberate). The target is made before the source is tested, and
  /// stays made when the source is missing (deliberate). A folder that
  /// cannot be listed shows "No files in source folder!" and counts as done.
  static bool Copy(ZnString const &subfolder, ZnString const &sourceRoot, ZnString const &targetRoot);
  /// Copies the files of source to target, and with `recursive` its folders
  /// too. True once the source is listed, whatever the single copies did
  /// (deliberate).
  static bool CopyFolder(ZnString const &source, ZnString const &target, bool recursive);

  /// Resolves path against base as text: a path with a drive stands as it
  /// is, a rooted path takes the drive of base, leading ".." parts climb
  /// base but never above its first part, and anything else is joined.
  /// Only leading ".." parts are resolved (deliberate).
  static ZnString CreateAbsolutePath(ZnString const &base, ZnString const &path);
  /// The way from `from` to `to`, both resolved against the start-up
  /// directory, always in lower case (deliberate). "." for the same place;
  /// `to` itself across drives; a way up to an ancestor ends in `\`, as in
  /// "..\..\" (deliberate).
  static ZnString CreateRelativePath(ZnString const &from, ZnString const &to);
  /// Folds "." and ".." parts of a rooted path (with or without a drive);
  /// ".." above the root stays. A path that is not rooted is left as it is.
  static ZnString RemoveRelativePartsFromAbsolutePath(ZnString const &path);
  /// Lets the user pick a folder, starting in `initial` if it is not empty.
  /// Empty when cancelled or when the host installed no folder chooser
  /// (znutil::platform::SetFolderChooser). The current directory is the
  /// same afterwards.
  static ZnString SelectDirectory(HWND owner, ZnString const &initial);

 private:
  ZnString fsPathName;
  /// Cleared by Open and Close and set by nothing: deliberate.
  bool bOpen;
  ZnListContext lcCursor;
};

#endif  // ZNUTIL_SYSTEM_ZNDIRECTORY_H
