// Test helpers that pin down what a clock test depends on: the time zone,
// and the tick count and sleeps through the platform's stand-ins.
#ifndef ZNUTIL_TESTS_SYSTEM_TESTCLOCKS_H
#define ZNUTIL_TESTS_SYSTEM_TESTCLOCKS_H

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include <znutil/platform/Clock.h>
#include <znutil/platform/Scheduling.h>

namespace znutil_test {

// Sets TZ (a POSIX rule, so that no zone database is needed) for the
// life of the object, and restores the one before.
class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(char const *rule) {
    char const *old = std::getenv("TZ");
    hadZone_ = old != nullptr;
    if (hadZone_) oldZone_ = old;
    setenv("TZ", rule, 1);
    tzset();
  }
  ~ScopedTimeZone() {
    if (hadZone_) {
      setenv("TZ", oldZone_.c_str(), 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }
  ScopedTimeZone(ScopedTimeZone const &) = delete;
  ScopedTimeZone &operator=(ScopedTimeZone const &) = delete;

 private:
  bool hadZone_ = false;
  std::string oldZone_;
};

// Stands in for the tick count and for sleeping while it lives: a sleep
// is recorded and moves the simulated tick count on by its length, so
// code that sleeps and reads the tick count runs at once and in a fixed
// order. For tests on one thread.
class SimulatedClock {
 public:
  explicit SimulatedClock(std::uint32_t start) {
    now_ = start;
    jump_ = 0;
    sleeps_.clear();
    previousTicks_ = znutil::platform::SetTickSource(&Read);
    previousSleep_ = znutil::platform::SetSleepFunction(&Sleep);
  }
  ~SimulatedClock() {
    znutil::platform::SetTickSource(previousTicks_);
    znutil::platform::SetSleepFunction(previousSleep_);
  }
  SimulatedClock(SimulatedClock const &) = delete;
  SimulatedClock &operator=(SimulatedClock const &) = delete;

  void Set(std::uint32_t now) { now_ = now; }
  void Advance(std::uint32_t milliseconds) { now_ += milliseconds; }
  // The next sleep moves the clock on by this much more than its length.
  void JumpOnNextSleep(std::uint32_t milliseconds) { jump_ = milliseconds; }
  std::vector<std::uint32_t> const &Sleeps() const { return sleeps_; }

 private:
  static std::uint32_t Read() { return now_; }
  static void Sleep(std::uint32_t milliseconds) {
    sleeps_.push_back(milliseconds);
    now_ += milliseconds + jump_;
    jump_ = 0;
  }

  inline static std::uint32_t now_ = 0;
  inline static std::uint32_t jump_ = 0;
  inline static std::vector<std::uint32_t> sleeps_;
  znutil::platform::TickSource previousTicks_;
  znutil::platform::SleepFunction previousSleep_;
};

// A FILETIME from its 64-bit count, and back.
inline FILETIME FileTimeOf(std::uint64_t ticks) {
  return FILETIME{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

inline std::uint64_t TicksOf(FILETIME const &file) {
  return static_cast<std::uint64_t>(file.dwHighDateTime) << 32 | file.dwLowDateTime;
}

// A SYSTEMTIME with the given fields and day of week 0.
inline SYSTEMTIME Fields(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second, WORD milli) {
  SYSTEMTIME system = SYSTEMTIME();
  system.wYear = year;
  system.wMonth = month;
  system.wDay = day;
  system.wHour = hour;
  system.wMinute = minute;
  system.wSecond = second;
  system.wMilliseconds = milli;
  return system;
}

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_SYSTEM_TESTCLOCKS_H
