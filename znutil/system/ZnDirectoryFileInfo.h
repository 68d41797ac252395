// ZnDirectoryFileInfo: one entry of a ZnDirectory listing, as the platform
// reported it when the folder was opened.
//
//   for (ZnDirectoryFileInfo *entry = folder.First(); entry != nullptr; entry = folder.Next())
//     if ((entry->QueryAttributes() & FILE_ATTRIBUTE_DIRECTORY) == 0) total += entry->Size();
#ifndef ZNUTIL_SYSTEM_ZNDIRECTORYFILEINFO_H
#define ZNUTIL_SYSTEM_ZNDIRECTORYFILEINFO_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/text/ZnString.h>

class ZnDirectory;
class ZnFileTime;
class ZnSystemTime;

class ZNUTIL_API ZnDirectoryFileInfo {
 public:
  /// The entry's name, without its folder.
  ZnString GetFileName();
  /// The owner's path name joined to the name with ZnString::operator^.
  ZnString GetFilePath();
  /// The attribute bits (FILE_ATTRIBUTE_DIRECTORY for a folder).
  unsigned long QueryAttributes() const;
  /// The low 32 bits of the size: a file of 4 GiB or more wraps (deliberate).
  unsigned long Size() const;
  /// The last write time; the target keeps its kind.
  void QueryModTime(ZnFileTime *time) const;
  /// The creation time; the target keeps its kind.
  void QueryCreateTime(ZnFileTime *time) const;
  /// The same times broken down as ZnSystemTime assigns a FILETIME.
  void QueryModTimeAsSystemTime(ZnSystemTime *time) const;
  void QueryCreateTimeAsSystemTime(ZnSystemTime *time) const;

 private:
  friend class ZnDirectory;

  explicit ZnDirectoryFileInfo(ZnDirectory *owner);

  WIN32_FIND_DATAA fdFindData;
  ZnDirectory *pDirectory;
};

#endif  // ZNUTIL_SYSTEM_ZNDIRECTORYFILEINFO_H
