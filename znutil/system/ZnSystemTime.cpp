#include <znutil/system/ZnSystemTime.h>

#include <znutil/platform/Clock.h>

namespace platform = znutil::platform;

namespace {

int const kLocalTime = 0;

}  // namespace

ZnSystemTime::ZnSystemTime(int kind) : SYSTEMTIME(), iTimeKind(kind) {}

ZnSystemTime::ZnSystemTime(ZnSystemTime const &other, int kind) : SYSTEMTIME(other), iTimeKind(kind) {}

ZnSystemTime::ZnSystemTime(std::tm const &calendar, int kind) : ZnSystemTime(kind) { *this = calendar; }

ZnSystemTime::ZnSystemTime(ZnTime const &time, int kind) : ZnSystemTime(kind) { *this = time; }

ZnSystemTime::ZnSystemTime(FILETIME const &file, int kind) : ZnSystemTime(kind) { *this = file; }

void ZnSystemTime::GetLocalTime() {
  std::tm calendar;
  std::uint16_t milliseconds = 0;
  platform::LocalTimeNow(&calendar, &milliseconds);
  *this = calendar;
  wMilliseconds = milliseconds;
}

void ZnSystemTime::GetSystemTime() {
  std::tm calendar;
  std::uint16_t milliseconds = 0;
  platform::UtcTimeNow(&calendar, &milliseconds);
  *this = calendar;
  wMilliseconds = milliseconds;
}

ZnSystemTime &ZnSystemTime::operator=(std::tm const &calendar) {
  wYear = static_cast<WORD>(calendar.tm_year + 1900);
  wMonth = static_cast<WORD>(calendar.tm_mon + 1);
  wDayOfWeek = static_cast<WORD>(calendar.tm_wday);
  wDay = static_cast<WORD>(calendar.tm_mday);
  wHour = static_cast<WORD>(calendar.tm_hour);
  wMinute = static_cast<WORD>(calendar.tm_min);
  wSecond = static_cast<WORD>(calendar.tm_sec);
  wMilliseconds = 0;
  return *this;
}

ZnSystemTime &ZnSystemTime::operator=(ZnTime const &time) {
  std::tm const *calendar = time.LocalTime();
  // Seconds beyond the calendar leave the value as it was.
  if (calendar != nullptr) *this = *calendar;
  return *this;
}

ZnSystemTime &ZnSystemTime::operator=(FILETIME const &file) {
  FILETIME shown = file;
  if (iTimeKind == kLocalTime && !platform::FileTimeToLocalFileTime(file, &shown)) return *this;
  platform::FileTimeToSystemTime(shown, this);
  return *this;
}

void ZnSystemTime::Convert(FILETIME *file) const {
  FILETIME converted;
  if (!platform::SystemTimeToFileTime(*this, &converted)) return;
  if (iTimeKind != kLocalTime) {
    *file = converted;
    return;
  }
  platform::LocalFileTimeToFileTime(converted, file);
}

void ZnSystemTime::Convert(std::tm *calendar) const {
  calendar->tm_year = wYear - 1900;
  calendar->tm_mon = wMonth - 1;
  calendar->tm_wday = wDayOfWeek;
  calendar->tm_mday = wDay;
  calendar->tm_hour = wHour;
  calendar->tm_min = wMinute;
  calendar->tm_sec = wSecond;
  calendar->tm_yday = 0;
  std::tm const *present = ZnTime().LocalTime();
  calendar->tm_isdst = present != nullptr ? present->tm_isdst : 0;
}

ZnSystemTime::operator ZnTime() const {
  std::tm calendar = std::tm();
  Convert(&calendar);
  return ZnTime(static_cast<long>(platform::MakeLocalTime(&calendar)), 0);
}
