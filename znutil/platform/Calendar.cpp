// The calendar arithmetic of FILETIME and SYSTEMTIME. It needs no system
// service: a FILETIME counts 100 ns units from 1601-01-01 in the proleptic
// Gregorian calendar.
#include <znutil/platform/Clock.h>

namespace znutil {
namespace platform {
namespace {

std::int64_t const kTicksPerSecond = 10000000;
std::int64_t const kTicksPerMillisecond = 10000;
std::int64_t const kSecondsPerDay = 86400;
// Days from 1601-01-01 to 1970-01-01.
std::int64_t const kDaysTo1970 = 134774;
// Windows refuses file times with the top bit set.
std::uint64_t const kLargestFileTime = 0x7FFFFFFFFFFFFFFFull;

struct CivilDate {
  std::int64_t year;
  unsigned month;
  unsigned day;
};

// Days since 1970-01-01 of a date, counting years from March so that the
// leap day falls at the end of the year.
std::int64_t DaysFromCivil(CivilDate const &date) {
  std::int64_t const year = date.year - (date.month <= 2 ? 1 : 0);
  std::int64_t const era = (year >= 0 ? year : year - 399) / 400;
  std::int64_t const yearOfEra = year - era * 400;
  std::int64_t const dayOfYear = (153 * (date.month > 2 ? date.month - 3 : date.month + 9) + 2) / 5 + date.day - 1;
  std::int64_t const dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

CivilDate CivilFromDays(std::int64_t days) {
  days += 719468;
  std::int64_t const era = (days >= 0 ? days : days - 146096) / 146097;
  std::int64_t const dayOfEra = days - era * 146097;
  std::int64_t const yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  std::int64_t const dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  std::int64_t const shiftedMonth = (5 * dayOfYear + 2) / 153;
  CivilDate date;
  date.day = static_cast<unsigned>(dayOfYear - (153 * shiftedMonth + 2) / 5 + 1);
  date.month = static_cast<unsigned>(shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9);
  date.year = yearOfEra + era * 400 + (date.month <= 2 ? 1 : 0);
  return date;
}

bool IsLeapYear(unsigned year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

unsigned DaysInMonth(unsigned year, unsigned month) {
  static unsigned const kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

bool IsValid(SYSTEMTIME const &system) {
  return system.wYear >= 1601 && system.wYear <= 30827 && system.wMonth >= 1 && system.wMonth <= 12 &&
         system.wDay >= 1 && system.wDay <= DaysInMonth(system.wYear, system.wMonth) && system.wHour < 24 &&
         system.wMinute < 60 && system.wSecond < 60 && system.wMilliseconds < 1000;
}

}  // namespace

std::uint64_t FileTimeTicks(FILETIME const &file) {
  return static_cast<std::uint64_t>(file.dwHighDateTime) << 32 | file.dwLowDateTime;
}

FILETIME FileTimeFromTicks(std::uint64_t ticks) {
  return FILETIME{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

FILETIME FileTimeFromUnixTime(std::int64_t seconds, std::int64_t nanoseconds) {
  std::int64_t const ticks = (seconds + kDaysTo1970 * kSecondsPerDay) * kTicksPerSecond + nanoseconds / 100;
  // Nothing a file system stores lies before 1601; clamp rather than wrap.
  return FileTimeFromTicks(ticks < 0 ? 0 : static_cast<std::uint64_t>(ticks));
}

std::int64_t UnixSecondsOfFileTime(FILETIME const &file) {
  return static_cast<std::int64_t>(FileTimeTicks(file) / kTicksPerSecond) - kDaysTo1970 * kSecondsPerDay;
}

bool ShiftFileTime(FILETIME const &file, std::int64_t seconds, FILETIME *shifted) {
  std::uint64_t const ticks = FileTimeTicks(file);
  std::int64_t delta = 0;
  std::int64_t moved = 0;
  if (ticks > kLargestFileTime || __builtin_mul_overflow(seconds, kTicksPerSecond, &delta) ||
      __builtin_add_overflow(static_cast<std::int64_t>(ticks), delta, &moved) || moved < 0) {
    return false;
  }
  *shifted = FileTimeFromTicks(static_cast<std::uint64_t>(moved));
  return true;
}

bool FileTimeToSystemTime(FILETIME const &file, SYSTEMTIME *system) {
  std::uint64_t const ticks = FileTimeTicks(file);
  if (ticks > kLargestFileTime) return false;
  std::int64_t const days = static_cast<std::int64_t>(ticks) / (kSecondsPerDay * kTicksPerSecond);
  std::int64_t const ticksOfDay = static_cast<std::int64_t>(ticks) % (kSecondsPerDay * kTicksPerSecond);
  std::int64_t const secondOfDay = ticksOfDay / kTicksPerSecond;
  CivilDate const date = CivilFromDays(days - kDaysTo1970);
  system->wYear = static_cast<WORD>(date.year);
  system->wMonth = static_cast<WORD>(date.month);
  system->wDayOfWeek = static_cast<WORD>((days + 1) % 7);  // 1601-01-01 was a Monday
  system->wDay = static_cast<WORD>(date.day);
  system->wHour = static_cast<WORD>(secondOfDay / 3600);
  system->wMinute = static_cast<WORD>(secondOfDay / 60 % 60);
  system->wSecond = static_cast<WORD>(secondOfDay % 60);
  system->wMilliseconds = static_cast<WORD>(ticksOfDay % kTicksPerSecond / kTicksPerMillisecond);
  return true;
}

bool SystemTimeToFileTime(SYSTEMTIME const &system, FILETIME *file) {
  if (!IsValid(system)) return false;
  std::int64_t const days = DaysFromCivil(CivilDate{system.wYear, system.wMonth, system.wDay}) + kDaysTo1970;
  std::int64_t const seconds = days * kSecondsPerDay + system.wHour * 3600 + system.wMinute * 60 + system.wSecond;
  *file = FileTimeFromTicks(static_cast<std::uint64_t>(seconds * kTicksPerSecond +
                                                       system.wMilliseconds * kTicksPerMillisecond));
  return true;
}

int CompareFileTime(FILETIME const &first, FILETIME const &second) {
  std::uint64_t const a = FileTimeTicks(first);
  std::uint64_t const b = FileTimeTicks(second);
  return a < b ? -1 : (a > b ? 1 : 0);
}

}  // namespace platform
}  // namespace znutil
