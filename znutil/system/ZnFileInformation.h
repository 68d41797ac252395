// ZnFileInformation: attributes, size and times of a file, read through an
// open handle.
//
//   ZnFileInformation info("logs\\app.log");
//   if (info.Valid()) std::printf("%u bytes\n", info.Size());
//
// The path is kept in the form of ZnString::ToPath. Refresh reads the facts again; a failed
// Refresh keeps the former facts but marks them not valid. A folder cannot
// be opened as a file and is never valid. Copies are deep.
#ifndef ZNUTIL_SYSTEM_ZNFILEINFORMATION_H
#define ZNUTIL_SYSTEM_ZNFILEINFORMATION_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/system/ZnFileTime.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnFileInformation {
 public:
  /// Not valid, with an empty path.
  ZnFileInformation();
  /// Open(path).
  explicit ZnFileInformation(ZnString const &path);
  ZnFileInformation(ZnFileInformation const &other) = default;
  ZnFileInformation &operator=(ZnFileInformation const &other) = default;
  virtual ~ZnFileInformation();

  /// Keeps `path` in the form of ZnString::ToPath, then Refresh().
  bool Open(ZnString const &path);
  /// Reads the facts of the file at the path; returns Valid().
  bool Refresh();
  bool Valid() const { return bValid; }
  ZnString const &Path() const { return fsPath; }
  /// FILE_ATTRIBUTE_READONLY when the owner may not write the file, else
  /// FILE_ATTRIBUTE_NORMAL.
  ZnULong Attributes() const { return bhfiInformation.dwFileAttributes; }
  /// The low 32 bits of the size.
  ZnULong Size() const { return bhfiInformation.nFileSizeLow; }
  /// Birth time where the file system keeps one, else the last status
  /// change; each time is shown as local time (kind 1).
  ZnFileTime CreationTime() const { return ZnFileTime(bhfiInformation.ftCreationTime, 1); }
  ZnFileTime AccessedTime() const { return ZnFileTime(bhfiInformation.ftLastAccessTime, 1); }
  ZnFileTime ModifiedTime() const { return ZnFileTime(bhfiInformation.ftLastWriteTime, 1); }

 private:
  BY_HANDLE_FILE_INFORMATION bhfiInformation;
  bool bValid;
  ZnString fsPath;
};

#endif  // ZNUTIL_SYSTEM_ZNFILEINFORMATION_H
