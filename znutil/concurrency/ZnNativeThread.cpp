#include <znutil/concurrency/ZnNativeThread.h>

#include <znutil/concurrency/ZnNativeThreadWaitObject.h>
#include <znutil/concurrency/ZnThread.h>
#include <znutil/platform/File.h>
#include <znutil/platform/Scheduling.h>
#include <znutil/platform/Thread.h>

namespace platform = znutil::platform;

namespace {

constexpr ZnULong kNativeAdopt = 8;
constexpr ZnULong kNativeSuspended = 2;

constexpr int kPriorityLevels[] = {
    platform::kThreadPriorityLowest,  platform::kThreadPriorityBelowNormal, platform::kThreadPriorityNormal,
    platform::kThreadPriorityAboveNormal, platform::kThreadPriorityHighest, platform::kThreadPriorityTimeCritical};

}  // namespace

ZnNativeThread::ZnNativeThread(ZnThread *owner, ZnULong nativeFlags)
    : ZnPrimitiveThread(owner, nativeFlags), hThread(nullptr) {
  ZnThread::AllocateTls();
  if (nativeFlags & kNativeAdopt) {
    owner->udwThreadId.store(platform::GetCurrentThreadId());
    hThread = platform::OpenCurrentThread();
    ZnThread::InitializeThreadData(owner);
  } else {
    hThread = platform::BeginThread(&ZnThread::EntryRoutine, owner, (nativeFlags & kNativeSuspended) != 0);
  }
}

ZnNativeThread::ZnNativeThread(ZnNativeThread const &other, ZnThread *owner)
    : ZnPrimitiveThread(owner, other.udwNativeFlags), hThread(platform::DuplicateHandle(other.hThread)) {}

ZnNativeThread::~ZnNativeThread() { platform::CloseHandle(hThread); }

void ZnNativeThread::SetPriority(int level) {
  if (level >= 0 && level < static_cast<int>(sizeof kPriorityLevels / sizeof kPriorityLevels[0])) {
    platform::SetThreadPriority(hThread, kPriorityLevels[level]);
  }
}

void ZnNativeThread::Suspend() {
  if (platform::SuspendThread(hThread) > 0) pOwner->MarkSuspended(true);
}

void ZnNativeThread::Resume() {
  if (platform::ResumeThread(hThread) == 0) pOwner->MarkSuspended(false);
}

void ZnNativeThread::Terminate(int exitCode) { platform::TerminateThread(hThread, static_cast<DWORD>(exitCode)); }

void ZnNativeThread::Yield() { platform::YieldProcessor(); }

ZnPrimitiveThreadWaitObject *ZnNativeThread::GetWaitObject() { return new ZnNativeThreadWaitObject(hThread); }
