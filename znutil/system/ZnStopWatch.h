// ZnStopWatch: measures spans and periods with the millisecond tick count.
//
//   ZnStopWatch watch;
//   watch.Start(500);               // a period of 500 ms from now
//   while (!watch.HasExpired()) Poll();
//
// Elapsed is always stop minus start by the rule of ZnSubtractTickCounts,
// so across a wrap of the tick count it is one millisecond short.
#ifndef ZNUTIL_SYSTEM_ZNSTOPWATCH_H
#define ZNUTIL_SYSTEM_ZNSTOPWATCH_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/system/ZnTime.h>

class ZNUTIL_API ZnStopWatch {
 public:
  /// Start, stop and period all 0.
  ZnStopWatch();

  /// Starts now; the period stays.
  void Start();
  /// Starts now with a period of `milliseconds`, or of `span` (seconds
  /// times 1000 plus milliseconds).
  void Start(long milliseconds);
  void Start(ZnTime const &span);
  /// Stop is now. Pause is the same call.
  void Stop();
  void Pause();
  /// Goes on from a Pause: start moves so that the span run up so far
  /// continues from now. When now is not above that span, start is now
  /// minus the span minus 1, the mirror of the wrap rule (deliberate).
  void Resume();
  /// Start is now; stop and period stay.
  void Reset();

  /// Stop is now; yields elapsed.
  ZnULong MeasureElapsed();
  /// Stop is now; true if elapsed is strictly above the period.
  bool HasExpired();
  /// Elapsed from the last start and stop, with no clock read.
  ZnULong ComputeElapsed() const;
  ZnTime GetElapsed() const;
  /// Start or stop as seconds and milliseconds of tick time.
  ZnTime GetStartTime() const;
  ZnTime GetStopTime() const;
  ZnULong Period() const { return udwPeriod; }

  /// The tick count.
  static ZnULong GetTickCount();

 private:
  ZnULong udwStart;
  ZnULong udwStop;
  ZnULong udwPeriod;
};

#endif  // ZNUTIL_SYSTEM_ZNSTOPWATCH_H
