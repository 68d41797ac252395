// ZnTime: a time or a span as whole seconds and milliseconds.
//
//   ZnTime begun;                       // now, by the wall clock
//   ...
//   ZnTime spent = ZnTime() - begun;    // a span with no sign
//   std::cout << spent;                 // "12.045"
//
// Seconds count from 1970-01-01 UTC for a time; both fields are 32-bit and
// milliseconds normally lie in 0..999.
#ifndef ZNUTIL_SYSTEM_ZNTIME_H
#define ZNUTIL_SYSTEM_ZNTIME_H

#include <ctime>
#include <ostream>
#include <string>

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

class ZNUTIL_API ZnTime {
 public:
  /// Now, by the wall clock.
  ZnTime();
  /// A span of `milliseconds`: seconds and remainder of dividing by 1000,
  /// both truncated toward zero (-1500 is -1 s and -500 ms).
  ZnTime(long milliseconds);
  /// `seconds` and `milliseconds % 1000`. The carry `milliseconds / 1000`
  /// is dropped on purpose: (1, 2500) is 1.500, not 3.500.
  ZnTime(long seconds, long milliseconds);

  /// The span of `milliseconds`, as the constructor makes it.
  ZnTime &operator=(long milliseconds);

  /// Reads the wall clock again.
  void Update();

  long Seconds() const { return lSeconds; }
  long Milli() const { return lMilliseconds; }

  /// Order by seconds, then by milliseconds.
  int operator==(ZnTime const &other) const;
  int operator!=(ZnTime const &other) const { return !(*this == other); }
  int operator<(ZnTime const &other) const;
  int operator>(ZnTime const &other) const { return other < *this; }
  int operator<=(ZnTime const &other) const { return !(other < *this); }
  int operator>=(ZnTime const &other) const { return !(*this < other); }

  /// Adds the milliseconds, carrying whole seconds into the seconds.
  ZnTime operator+(ZnTime const &other) const;
  ZnTime &operator+=(ZnTime const &other);

  /// The span between two times, with no sign. Borrowing a second when the
  /// milliseconds run short, then taking the size of the seconds, is
  /// deliberate: for an earlier minus a later time the seconds come out
  /// right in size but the milliseconds are not mirrored (1.900 - 2.100 is
  /// 1.800). Callers test order with the comparisons.
  ZnTime operator-(ZnTime const &other) const;
  ZnTime &operator-=(ZnTime const &other);

  /// The seconds broken down in local time or in UTC, in the one result
  /// that every call on this thread overwrites; null if out of range.
  std::tm *LocalTime() const;
  std::tm *GreenwichMeanTime() const;

 private:
  ZnLong lSeconds;
  ZnLong lMilliseconds;
};

/// Seconds, ".", then the milliseconds without sign in at least 3 digits:
/// "2.050", and "-1.500" for -1500 ms.
template <class CharT, class Traits>
std::basic_ostream<CharT, Traits> &operator<<(std::basic_ostream<CharT, Traits> &stream, ZnTime const &time) {
  long const milli = time.Milli() < 0 ? -time.Milli() : time.Milli();
  std::string digits = std::to_string(milli);
  if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
  stream << time.Seconds() << stream.widen('.');
  for (char digit : digits) stream << stream.widen(digit);
  return stream;
}

#endif  // ZNUTIL_SYSTEM_ZNTIME_H
