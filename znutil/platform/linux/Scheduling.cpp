// Yield and sleep over sched_yield and nanosleep.
#include <znutil/platform/Scheduling.h>

#include <cerrno>
#include <ctime>
#include <sched.h>

namespace znutil {
namespace platform {

void YieldProcessor() { sched_yield(); }

void SleepMilliseconds(std::uint32_t milliseconds) {
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
