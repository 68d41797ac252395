// Clocks over clock_gettime, and broken-down time over localtime_r,
// gmtime_r and mktime.
#include <znutil/platform/Clock.h>

#include <atomic>
#include <time.h>

namespace znutil {
namespace platform {
namespace {

std::atomic<TickSource> tickSource{nullptr};

// The one broken-down time of SharedLocalTime and SharedUtcTime.
thread_local std::tm sharedCalendar;

timespec ReadClock(clockid_t clock) {
  timespec now;
  clock_gettime(clock, &now);
  return now;
}

std::uint16_t MillisecondPart(timespec const &time) { return static_cast<std::uint16_t>(time.tv_nsec / 1000000); }

std::uint32_t SystemTickCount() {
  timespec const now = ReadClock(CLOCK_MONOTONIC);
  std::uint64_t const milliseconds = static_cast<std::uint64_t>(now.tv_sec) * 1000u + MillisecondPart(now);
  return static_cast<std::uint32_t>(milliseconds);
}

// The distance of local time from UTC at `seconds`, daylight saving included.
bool UtcOffsetAt(std::int64_t seconds, std::int64_t *offset) {
  time_t const instant = static_cast<time_t>(seconds);
  std::tm calendar;
  if (localtime_r(&instant, &calendar) == nullptr) return false;
  *offset = calendar.tm_gmtoff;
  return true;
}

}  // namespace

std::uint32_t TickCount() {
  TickSource const source = tickSource.load(std::memory_order_acquire);
  return source != nullptr ? source() : SystemTickCount();
}

TickSource SetTickSource(TickSource source) { return tickSource.exchange(source, std::memory_order_acq_rel); }

std::int64_t PerformanceCounter() {
  timespec const now = ReadClock(CLOCK_MONOTONIC);
  return static_cast<std::int64_t>(now.tv_sec) * 1000000000 + now.tv_nsec;
}

std::int64_t PerformanceFrequency() { return 1000000000; }

void CurrentTime(std::int64_t *seconds, std::uint16_t *milliseconds) {
  timespec const now = ReadClock(CLOCK_REALTIME);
  *seconds = now.tv_sec;
  *milliseconds = MillisecondPart(now);
}

void LocalTimeNow(std::tm *calendar, std::uint16_t *milliseconds) {
  timespec const now = ReadClock(CLOCK_REALTIME);
  localtime_r(&now.tv_sec, calendar);
  *milliseconds = MillisecondPart(now);
}

void UtcTimeNow(std::tm *calendar, std::uint16_t *milliseconds) {
  timespec const now = ReadClock(CLOCK_REALTIME);
  gmtime_r(&now.tv_sec, calendar);
  *milliseconds = MillisecondPart(now);
}

FILETIME SystemTimeAsFileTime() {
  timespec const now = ReadClock(CLOCK_REALTIME);
  return FileTimeFromUnixTime(now.tv_sec, now.tv_nsec);
}

std::tm *SharedLocalTime(std::int64_t seconds) {
  time_t const instant = static_cast<time_t>(seconds);
  return localtime_r(&instant, &sharedCalendar);
}

std::tm *SharedUtcTime(std::int64_t seconds) {
  time_t const instant = static_cast<time_t>(seconds);
  return gmtime_r(&instant, &sharedCalendar);
}

std::int64_t MakeLocalTime(std::tm *calendar) { return mktime(calendar); }

bool FileTimeToLocalFileTime(FILETIME const &utc, FILETIME *local) {
  std::int64_t offset = 0;
  return UtcOffsetAt(UnixSecondsOfFileTime(utc), &offset) && ShiftFileTime(utc, offset, local);
}

bool LocalFileTimeToFileTime(FILETIME const &local, FILETIME *utc) {
  // The offset at the local reading taken as UTC is within a day of the
  // true one; the offset at the instant it points to settles it.
  std::int64_t const seconds = UnixSecondsOfFileTime(local);
  std::int64_t guess = 0;
  std::int64_t offset = 0;
  return UtcOffsetAt(seconds, &guess) && UtcOffsetAt(seconds - guess, &offset) && ShiftFileTime(local, -offset, utc);
}

}  // namespace platform
}  // namespace znutil
