// Giving up the processor: yield and sleep.
#ifndef ZNUTIL_PLATFORM_SCHEDULING_H
#define ZNUTIL_PLATFORM_SCHEDULING_H

#include <cstdint>

#include <znutil/platform/Export.h>

namespace znutil {
namespace platform {

/// Lets another ready thread run.
void YieldProcessor();

/// Sleeps for `milliseconds`; 0 yields, as Sleep(0) does.
void SleepMilliseconds(std::uint32_t milliseconds);

/// A stand-in for SleepMilliseconds.
using SleepFunction = void (*)(std::uint32_t milliseconds);

/// Makes SleepMilliseconds call `sleeper` instead of sleeping (null
/// restores the system sleep) and yields the one it replaces. Tests use it
/// to see the sleeps a caller makes without taking them.
ZNUTIL_API SleepFunction SetSleepFunction(SleepFunction sleeper);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_SCHEDULING_H
