#include <znutil/concurrency/ZnSleeper.h>

#include <znutil/platform/Scheduling.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/system/ZnTickCount.h>

void ZnSleeper::SystemSleep(long milliseconds) {
  znutil::platform::SleepMilliseconds(static_cast<ZnULong>(milliseconds));
}

void ZnSleeper::Snooze(long milliseconds) { SystemSleep(milliseconds); }

void ZnSleeper::Snooze(ZnTime const &span) {
  ZnULong const limit = static_cast<ZnULong>(span.Seconds() * 1000 + span.Milli());
  ZnULong const start = ZnGetTickCount();
  auto const overdue = [&] { return ZnSubtractTickCounts(ZnGetTickCount(), start) > limit; };
  for (long second = 0; second < span.Seconds(); ++second) {
    if (overdue()) return;
    SystemSleep(1000);
  }
  if (overdue()) return;
  SystemSleep(span.Milli());
}
