// Parking running threads for SuspendThread: what the rest of the Linux
// thread code needs of it.
#ifndef ZNUTIL_PLATFORM_LINUX_THREADSUSPEND_H
#define ZNUTIL_PLATFORM_LINUX_THREADSUSPEND_H

#include <znutil/platform/linux/ThreadRecord.h>

namespace znutil {
namespace platform {

/// Lets the park signal reach the calling thread, whatever mask it inherited.
void UnblockParkSignal();

/// Readies the calling thread to take the park signal; called before
/// anyone can send it one.
void PrepareForParkSignal();

/// Sets the suspend count of a started thread to 0, wakes it if it is
/// parked, and returns once it has left the park handler. The caller holds
/// `record.control`.
void ReleaseParked(ThreadRecord &record);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_LINUX_THREADSUSPEND_H
