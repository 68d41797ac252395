#include <znutil/system/ZnStopWatch.h>

#include <znutil/system/ZnTickCount.h>

ZnStopWatch::ZnStopWatch() : udwStart(0), udwStop(0), udwPeriod(0) {}

void ZnStopWatch::Start() { udwStart = GetTickCount(); }

void ZnStopWatch::Start(long milliseconds) {
  udwPeriod = static_cast<ZnULong>(milliseconds);
  Start();
}

void ZnStopWatch::Start(ZnTime const &span) { Start(span.Seconds() * 1000 + span.Milli()); }

void ZnStopWatch::Stop() { udwStop = GetTickCount(); }

void ZnStopWatch::Pause() { Stop(); }

void ZnStopWatch::Resume() {
  ZnULong const elapsed = ComputeElapsed();
  ZnULong const now = GetTickCount();
  udwStop = now;
  udwStart = now > elapsed ? now - elapsed : now - elapsed - 1;
}

void ZnStopWatch::Reset() { Start(); }

ZnULong ZnStopWatch::MeasureElapsed() {
  Stop();
  return ComputeElapsed();
}

bool ZnStopWatch::HasExpired() { return MeasureElapsed() > udwPeriod; }

ZnULong ZnStopWatch::ComputeElapsed() const { return ZnSubtractTickCounts(udwStop, udwStart); }

ZnTime ZnStopWatch::GetElapsed() const { return ZnTime(static_cast<long>(ComputeElapsed())); }

ZnTime ZnStopWatch::GetStartTime() const { return ZnTime(static_cast<long>(udwStart)); }

ZnTime ZnStopWatch::GetStopTime() const { return ZnTime(static_cast<long>(udwStop)); }

ZnULong ZnStopWatch::GetTickCount() { return ZnGetTickCount(); }
