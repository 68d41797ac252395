// Clocks and calendar conversions: the 32-bit millisecond tick count, the
// performance counter, the wall clock, the C run time's broken-down time,
// and FILETIME (100 ns units since 1601-01-01 UTC) against SYSTEMTIME.
//
// Conversions that fail leave their output unwritten and yield false.
#ifndef ZNUTIL_PLATFORM_CLOCK_H
#define ZNUTIL_PLATFORM_CLOCK_H

#include <cstdint>
#include <ctime>

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

/// Milliseconds of the monotonic clock, truncated to 32 bits: it wraps
/// every 49.7 days.
std::uint32_t TickCount();

/// A stand-in for the tick count's clock.
using TickSource = std::uint32_t (*)();

/// Makes TickCount read `source` instead of the system clock (null restores
/// the system clock) and yields the source it replaces. Tests use it to
/// reach the 32-bit wrap and exact spans without waiting for them.
ZNUTIL_API TickSource SetTickSource(TickSource source);

/// The high-resolution counter: monotonic nanoseconds.
std::int64_t PerformanceCounter();

/// Counts of PerformanceCounter per second; 0 if there is no such counter.
std::int64_t PerformanceFrequency();

/// The wall clock as seconds since 1970 and a millisecond part, as _ftime
/// gives them.
void CurrentTime(std::int64_t *seconds, std::uint16_t *milliseconds);

/// The wall clock broken down in local time or in UTC, with its
/// millisecond part.
void LocalTimeNow(std::tm *calendar, std::uint16_t *milliseconds);
void UtcTimeNow(std::tm *calendar, std::uint16_t *milliseconds);

/// The wall clock as a FILETIME at its full 100 ns resolution, so that a
/// time taken after a file was written is never earlier than its write time.
ZNUTIL_API FILETIME SystemTimeAsFileTime();

/// localtime and gmtime: the result lives in one broken-down time per
/// thread that both share, as in the Windows run time. Null if the seconds
/// cannot be broken down.
std::tm *SharedLocalTime(std::int64_t seconds);
std::tm *SharedUtcTime(std::int64_t seconds);

/// mktime: local broken-down time to seconds since 1970, normalising the
/// fields in place; -1 when it cannot be represented.
std::int64_t MakeLocalTime(std::tm *calendar);

/// FILETIME and SYSTEMTIME, both UTC (or both local). The day of the week
/// is computed, and ignored on input. Out-of-range input fails.
bool FileTimeToSystemTime(FILETIME const &file, SYSTEMTIME *system);
bool SystemTimeToFileTime(SYSTEMTIME const &system, FILETIME *file);

/// UTC to local file time and back, by the time zone's offset at that
/// instant (daylight saving included).
bool FileTimeToLocalFileTime(FILETIME const &utc, FILETIME *local);
bool LocalFileTimeToFileTime(FILETIME const &local, FILETIME *utc);

/// -1, 0 or 1 as `first` is earlier than, equal to or later than `second`.
int CompareFileTime(FILETIME const &first, FILETIME const &second);

/// The 64-bit count of a FILETIME, and back.
std::uint64_t FileTimeTicks(FILETIME const &file);
FILETIME FileTimeFromTicks(std::uint64_t ticks);

/// A FILETIME from seconds and nanoseconds since 1970.
FILETIME FileTimeFromUnixTime(std::int64_t seconds, std::int64_t nanoseconds);

/// Seconds since 1970 of a FILETIME, rounded down.
std::int64_t UnixSecondsOfFileTime(FILETIME const &file);

/// `file` moved by `seconds`; false if that leaves the range of file times.
bool ShiftFileTime(FILETIME const &file, std::int64_t seconds, FILETIME *shifted);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_CLOCK_H
