// Yield and sleep over sched_yield and nanosleep.
#include <znutil/platform/Scheduling.h>

#include <atomic>
#include <cerrno>
#include <ctime>
#include <sched.h>

namespace znutil {
namespace platform {
namespace {

std::atomic<SleepFunction> sleepFunction{nullptr};

}  // namespace

void YieldProcessor() { sched_yield(); }

SleepFunction SetSleepFunction(SleepFunction sleeper) {
  return sleepFunction.exchange(sleeper, std::memory_order_acq_rel);
}

void SleepMilliseconds(std::uint32_t milliseconds) {
  SleepFunction const sleeper = sleepFunction.load(std::memory_order_acquire);
  if (sleeper != nullptr) {
    sleeper(milliseconds);
    return;
  }
  if (milliseconds == 0) {
    sched_yield();
    return;
  }
  timespec remaining{static_cast<time_t>(milliseconds / 1000),
                     static_cast<long>(milliseconds % 1000) * 1000000L};
  while (nanosleep(&remaining, &remaining) != 0 && errno == EINTR) {
  }
}

}  // namespace platform
}  // namespace znutil
