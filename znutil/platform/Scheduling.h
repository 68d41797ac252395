// Giving up the processor: yield and sleep.
#ifndef ZNUTIL_PLATFORM_SCHEDULING_H
#define ZNUTIL_PLATFORM_SCHEDULING_H

#include <cstdint>

namespace znutil {
namespace platform {

/// Lets another ready thread run.
void YieldProcessor();

/// Sleeps for `milliseconds`; 0 yields, as Sleep(0) does.
void SleepMilliseconds(std::uint32_t milliseconds);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_SCHEDULING_H
