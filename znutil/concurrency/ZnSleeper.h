// ZnSleeper: puts the calling thread to sleep.
//
//   ZnSleeper::Snooze(200);                 // 200 ms
//   ZnSleeper::Snooze(ZnTime(90, 500));     // 90.5 s, in one-second pieces
#ifndef ZNUTIL_CONCURRENCY_ZNSLEEPER_H
#define ZNUTIL_CONCURRENCY_ZNSLEEPER_H

#include <znutil/platform/Export.h>
#include <znutil/system/ZnTime.h>

class ZNUTIL_API ZnSleeper {
 public:
  ZnSleeper() = default;
  ~ZnSleeper() = default;
  ZnSleeper &operator=(ZnSleeper const &) { return *this; }

  /// Sleeps `milliseconds`; 0 gives up the rest of the time slice. The
  /// value is taken as 32 bits unsigned, as the system call takes it.
  static void Snooze(long milliseconds);
  /// Sleeps for `span` in one-second pieces, then its millisecond part,
  /// checking the tick count before each piece so that a clock jump past
  /// the span ends the sleep. The last piece is always the millisecond
  /// part, not the time left: deliberate. A span of 0 still sleeps once,
  /// for 0 ms.
  static void Snooze(ZnTime const &span);

 private:
  static void SystemSleep(long milliseconds);
};

#endif  // ZNUTIL_CONCURRENCY_ZNSLEEPER_H
