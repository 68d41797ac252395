// Yield and sleep over sched_yield and clock_nanosleep.
#include <znutil/platform/Scheduling.h>

#include <atomic>
#include <cerrno>
#include <ctime>
#include <sched.h>

#include <znutil/platform/linux/PosixSync.h>

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
  // To a point on the clock, so that a signal (a suspension parks the
  // thread in one) does not start the sleep again with the time that was
  // left: the sleep ends by the clock, suspended time included.
  timespec const deadline = MonotonicAfter(milliseconds);
  while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &deadline, nullptr) == EINTR) {
  }
}

}  // namespace platform
}  // namespace znutil
