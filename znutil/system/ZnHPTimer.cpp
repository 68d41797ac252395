#include <znutil/system/ZnHPTimer.h>

#include <cmath>
#include <limits>

#include <znutil/platform/Clock.h>

std::atomic<bool> ZnHPTimer::bInitialized{false};
std::atomic<long long> ZnHPTimer::liFrequency{0};

ZnHPTimer::ZnHPTimer() : liStart(0), liFinish(0) { Initialize(); }

bool ZnHPTimer::Initialize() {
  if (bInitialized.load()) return true;
  long long const frequency = znutil::platform::PerformanceFrequency();
  liFrequency.store(frequency);
  bInitialized.store(true);
  return frequency != 0;
}

long long ZnHPTimer::GetFrequencyAsLong() { return liFrequency.load(); }

double ZnHPTimer::GetFrequency() {
  Initialize();
  return static_cast<double>(liFrequency.load());
}

long long ZnHPTimer::Start() { return liStart = znutil::platform::PerformanceCounter(); }

long long ZnHPTimer::Stop() { return liFinish = znutil::platform::PerformanceCounter(); }

void ZnHPTimer::AccumTimer(long long &total) const { total += liFinish - liStart; }

double ZnHPTimer::GetElapsedTimeInMs() const {
  return static_cast<double>(liFinish - liStart) / static_cast<double>(liFrequency.load()) * 1000.0;
}

ZnTime ZnHPTimer::GetElapsedTimeAsZnTime() const {
  double const milliseconds = GetElapsedTimeInMs();
  // A span beyond a long, or no span at all for want of a counter, would
  // make the conversion undefined.
  bool const representable = std::isfinite(milliseconds) &&
                             std::fabs(milliseconds) < static_cast<double>(std::numeric_limits<long>::max());
  return ZnTime(representable ? static_cast<long>(milliseconds) : 0L);
}
