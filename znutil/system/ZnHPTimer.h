// ZnHPTimer: measures with the high-resolution performance counter.
//
//   ZnHPTimer timer;
//   timer.Start();
//   Work();
//   timer.Stop();
//   double ms = timer.GetElapsedTimeInMs();
#ifndef ZNUTIL_SYSTEM_ZNHPTIMER_H
#define ZNUTIL_SYSTEM_ZNHPTIMER_H

#include <atomic>

#include <znutil/platform/Export.h>
#include <znutil/system/ZnTime.h>

class ZNUTIL_API ZnHPTimer {
 public:
  /// A timer with start and finish 0; fetches the frequency once.
  ZnHPTimer();

  /// Fetches the frequency on the first call and yields whether the
  /// system has a counter; true on every later call.
  static bool Initialize();
  /// The frequency in counts per second, 0 until something fetched it:
  /// unlike GetFrequency this form does not fetch it, on purpose.
  static long long GetFrequencyAsLong();
  /// The frequency, fetched if need be.
  static double GetFrequency();

  /// Reads the counter into start or finish and yields the reading.
  long long Start();
  long long Stop();
  long long GetStartTimeAsLong() const { return liStart; }
  long long GetFinishTimeAsLong() const { return liFinish; }

  /// Adds finish minus start to `total`.
  void AccumTimer(long long &total) const;
  /// (finish - start) / frequency * 1000; with no counter (frequency 0) the
  /// division by zero is the caller's to avoid by testing Initialize.
  double GetElapsedTimeInMs() const;
  /// The elapsed milliseconds, truncated, as seconds and milliseconds; 0
  /// when they are not a finite number.
  ZnTime GetElapsedTimeAsZnTime() const;

 private:
  long long liStart;
  long long liFinish;

  static std::atomic<bool> bInitialized;
  static std::atomic<long long> liFrequency;
};

#endif  // ZNUTIL_SYSTEM_ZNHPTIMER_H
