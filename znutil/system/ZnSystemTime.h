// ZnSystemTime: a calendar time broken down into the eight SYSTEMTIME
// fields, with a kind that says whether it is local time (0) or UTC
// (anything else).
//
//   ZnSystemTime now(0);
//   now.GetLocalTime();
//   FILETIME stamp;
//   now.Convert(&stamp);   // always UTC, whatever the kind
#ifndef ZNUTIL_SYSTEM_ZNSYSTEMTIME_H
#define ZNUTIL_SYSTEM_ZNSYSTEMTIME_H

#include <ctime>

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/system/ZnTime.h>

class ZNUTIL_API ZnSystemTime : public SYSTEMTIME {
 public:
  /// A time of the given kind with every field 0.
  explicit ZnSystemTime(int kind = 0);
  /// Each sets the kind, then assigns the value as operator= does.
  ZnSystemTime(ZnSystemTime const &other, int kind);
  ZnSystemTime(std::tm const &calendar, int kind);
  ZnSystemTime(ZnTime const &time, int kind);
  ZnSystemTime(FILETIME const &file, int kind);

  /// The wall clock in local time or in UTC; the kind is left as it is.
  void GetLocalTime();
  void GetSystemTime();

  /// The fields of `calendar`, with milliseconds 0; the kind stays.
  ZnSystemTime &operator=(std::tm const &calendar);
  /// The seconds of `time` broken down in local time, whatever the kind;
  /// its milliseconds are dropped.
  ZnSystemTime &operator=(ZnTime const &time);
  /// `file` (UTC) broken down, shown in local time for kind 0. Left as it
  /// was if the conversion fails.
  ZnSystemTime &operator=(FILETIME const &file);

  /// As a UTC FILETIME; for kind 0 the fields are first taken as local
  /// time. `file` is left unwritten if the fields are not a valid time.
  void Convert(FILETIME *file) const;
  /// The fields back into `calendar`, day of year 0. The daylight saving
  /// flag is that of the present moment, not of this value: a deliberate
  /// quirk that shifts mktime by an hour across a change of season.
  void Convert(std::tm *calendar) const;

  /// Convert to `tm`, then mktime: seconds, milliseconds 0.
  operator ZnTime() const;

 private:
  int iTimeKind;
};

#endif  // ZNUTIL_SYSTEM_ZNSYSTEMTIME_H
