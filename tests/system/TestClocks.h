// Test helpers that pin down what a test depends on: environment variables (the time zone among them), and
// the tick count and sleeps through the platform's stand-ins.
#ifndef ZNUTIL_TESTS_SYSTEM_TESTCLOCKS_H
#define ZNUTIL_TESTS_SYSTEM_TESTCLOCKS_H

#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include <znutil/platform/Clock.h>
#include <znutil/platform/Scheduling.h>

namespace znutil_test {

// Sets an environment variable for the life of the object.
class ScopedVariable {
 public:
  ScopedVariable(char const *name, std::string const &value) : name_(name) {
    if (char const *old = std::getenv(name)) old_ = old;
    setenv(name, value.c_str(), 1);
  }
  ~ScopedVariable() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }
  ScopedVariable(ScopedVariable const &) = delete;
  ScopedVariable &operator=(ScopedVariable const &) = delete;

 private:
  char const *name_;
  std::optional<std::string> old_;
};

// Sets TZ (a POSIX rule, so that no zone database is needed) for the life of the object.
class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(char const *rule) : zone_("TZ", rule) { tzset(); }

 private:
  // Declared first so that it runs last, once TZ is restored.
  struct Reread {
    ~Reread() { tzset(); }
  } reread_;
  ScopedVariable zone_;
};

// Stands in for the tick count and for sleeping while it lives: a sleep is recorded and moves the simulated
// tick count on by its length, so code that sleeps and reads the tick count runs at once and in a fixed
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

// The seconds of the wall clock, which the library reads too.
inline std::int64_t WallSeconds() { return std::time(nullptr); }

// A FILETIME from its 64-bit count, and back; the count of a Unix time.
inline FILETIME FileTimeOf(std::uint64_t ticks) { return FILETIME{DWORD(ticks), DWORD(ticks >> 32)}; }
inline std::uint64_t TicksOf(FILETIME const &file) {
  return std::uint64_t{file.dwHighDateTime} << 32 | file.dwLowDateTime;
}
inline std::uint64_t TicksOfUnix(std::int64_t seconds, std::int64_t nanoseconds = 0) {
  return static_cast<std::uint64_t>((seconds + 11644473600) * 10000000 + nanoseconds / 100);
}

// A SYSTEMTIME with the given fields, and all eight fields for comparisons that print well.
inline SYSTEMTIME Fields(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second, WORD milli,
                         WORD dayOfWeek = 0) {
  return SYSTEMTIME{year, month, dayOfWeek, day, hour, minute, second, milli};
}
inline std::array<WORD, 8> FieldsOf(SYSTEMTIME const &s) {
  return {s.wYear, s.wMonth, s.wDayOfWeek, s.wDay, s.wHour, s.wMinute, s.wSecond, s.wMilliseconds};
}

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_SYSTEM_TESTCLOCKS_H
