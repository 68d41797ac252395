// ZnFileTime: a FILETIME (100 ns units since 1601-01-01 UTC) with a kind:
// 1 means it is shown in local time when broken down, anything else that it
// is broken down as it stands.
//
//   ZnFileTime written(1);
//   if (written.SetFromFile("logs\\app.log") && written > lastSeen) ...
#ifndef ZNUTIL_SYSTEM_ZNFILETIME_H
#define ZNUTIL_SYSTEM_ZNFILETIME_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnFileTime : public FILETIME {
 public:
  /// The time 0 (1601-01-01) of the given kind.
  explicit ZnFileTime(int kind = 0);
  /// Each sets the kind, then assigns the value as operator= does.
  ZnFileTime(ZnFileTime const &other, int kind);
  ZnFileTime(FILETIME const &file, int kind);
  ZnFileTime(SYSTEMTIME const &system, int kind);
  ZnFileTime(ZnFileTime const &other) = default;

  /// Assignments take the value only: the kind stays.
  ZnFileTime &operator=(ZnFileTime const &other);
  ZnFileTime &operator=(FILETIME const &file);
  /// `system` taken as it stands, whatever the kind; left as it was if
  /// `system` is not a valid time.
  ZnFileTime &operator=(SYSTEMTIME const &system);

  /// Broken down into `system`, in local time for kind 1; left unwritten
  /// if the conversion fails.
  void Convert(SYSTEMTIME *system) const;

  /// The last write time of the file at `path` (`\` or `/` separators).
  /// False, and the value unchanged, if the file cannot be opened for
  /// reading; a directory is not a file here.
  bool SetFromFile(ZnString const &path);

  /// Order of the 64-bit values.
  bool operator==(FILETIME const &other) const;
  bool operator!=(FILETIME const &other) const;
  bool operator<(FILETIME const &other) const;
  bool operator<=(FILETIME const &other) const;
  bool operator>(FILETIME const &other) const;
  bool operator>=(FILETIME const &other) const;

 private:
  int iTimeKind;
};

#endif  // ZNUTIL_SYSTEM_ZNFILETIME_H
