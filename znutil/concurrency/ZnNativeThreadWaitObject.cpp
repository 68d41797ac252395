#include <znutil/concurrency/ZnNativeThreadWaitObject.h>

#include <znutil/platform/File.h>
#include <znutil/platform/Thread.h>

namespace platform = znutil::platform;

bool ZnPrimitiveThreadWaitObject::Wait(unsigned long) { return false; }

ZnNativeThreadWaitObject::ZnNativeThreadWaitObject(HANDLE hThreadToWaitFor)
    : hThread(platform::DuplicateHandle(hThreadToWaitFor)) {}

ZnNativeThreadWaitObject::~ZnNativeThreadWaitObject() { platform::CloseHandle(hThread); }

bool ZnNativeThreadWaitObject::Wait(unsigned long milliseconds) {
  return platform::WaitForThread(hThread, static_cast<std::uint32_t>(milliseconds)) != platform::WaitResult::kTimeout;
}
