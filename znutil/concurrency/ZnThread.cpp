#include <znutil/concurrency/ZnThread.h>

#include <optional>

#include <znutil/concurrency/ZnNativeThread.h>
#include <znutil/concurrency/ZnPrimitiveThreadWaitObject.h>
#include <znutil/concurrency/internal/ZnThreadRecord.h>
#include <znutil/memory/ZnFixedBlockAllocator.h>
#include <znutil/platform/Thread.h>

namespace {

constexpr ZnULong kNativeAdopt = 8;
constexpr ZnULong kNativeNewThread = 4;
constexpr ZnULong kNativeSuspended = 2;

ZnULong NativeFlags(int flags) {
  ZnULong native = (flags & ZnThread::kAdoptCallingThread) ? kNativeAdopt : kNativeNewThread;
  if (flags & ZnThread::kStartSuspended) native += kNativeSuspended;
  return native;
}

bool IsIdle(ZnULong state) { return (state & ZnThread::kStateIdle) && !(state & ZnThread::kStateWorking); }

}  // namespace

ZnThread::ZnThread(int flags)
    : udwThreadId(0),
      udwCreationFlags(static_cast<ZnULong>(flags)),
      pPrimitive(nullptr),
      udwState(kStateConstructed),
      pevtWake(nullptr),
      pPendingWork(nullptr),
      pNotification(nullptr) {
  pPrimitive = new ZnNativeThread(this, NativeFlags(flags));
}

ZnThread::ZnThread(ZnThread const &other) : pPrimitive(nullptr), pevtWake(nullptr) { CopyFrom(other); }

ZnThread &ZnThread::operator=(ZnThread const &other) {
  if (this != &other) {
    Release();
    CopyFrom(other);
  }
  return *this;
}

// The original copies the owned pointers raw, so that two objects would
// free them twice; each copy holds its own handle and its own share of the
// wake event instead.
void ZnThread::CopyFrom(ZnThread const &other) {
  udwThreadId.store(other.udwThreadId.load());
  udwCreationFlags = other.udwCreationFlags;
  auto const *native = static_cast<ZnNativeThread const *>(other.pPrimitive);
  pPrimitive = native != nullptr ? new ZnNativeThread(*native, this) : nullptr;
  udwState.store(other.udwState.load());
  ZnEvent const *wake = other.pevtWake.load();
  pevtWake.store(wake != nullptr ? new ZnEvent(*wake) : nullptr);
  pPendingWork.store(other.pPendingWork.load());
  pNotification.store(other.pNotification.load());
}

void ZnThread::Release() {
  delete pPrimitive;
  pPrimitive = nullptr;
  delete pevtWake.exchange(nullptr);
}

ZnThread::~ZnThread() {
  Release();
  if ((udwCreationFlags & kSelfDeleting) && !(udwState.load() & kKeepThreadData)) DestroyThreadData();
}

void ZnThread::SetState(unsigned lowByte) {
  ZnULong state = udwState.load();
  while (!udwState.compare_exchange_weak(state, (state & ~0xFFu) | (lowByte & 0xFFu))) {
  }
}

void ZnThread::ModState(int bits) { udwState.fetch_or(static_cast<ZnULong>(bits) & 0xFF00u); }

void ZnThread::MarkSuspended(bool suspended) {
  if (suspended) {
    udwState.fetch_or(kStateSuspended);
  } else {
    udwState.fetch_and(~static_cast<ZnULong>(kStateSuspended));
  }
}

unsigned ZnThread::EntryRoutine(void *argument) {
  auto *thread = static_cast<ZnThread *>(argument);
  thread->udwThreadId.store(znutil::platform::GetCurrentThreadId());
  thread->pevtWake.store(new ZnEvent(false));
  InitializeThreadData(thread);
  if (ZnThreadNotify *notify = thread->pNotification.load()) notify->Notify(0, thread);
  thread->ThreadEntry();
  if (ZnThreadNotify *notify = thread->pNotification.load()) notify->Notify(1, thread);
  if (thread->udwCreationFlags & kSelfDeleting) {
    delete thread;
  } else {
    thread->udwState.store(kStateEnded);  // the high byte goes too
  }
  ZnFixedBlockAllocator::Shutdown();
  znutil::detail::MarkHeapGivenBack();
  return 0;
}

void ZnThread::ThreadEntry() {
  for (;;) {
    if (udwState.load() & kShutdownRequested) return;
    SetState(kStateIdle);
    // A shutdown asked for just before SetState found the thread not yet
    // idle and sent no wake-up, so it is looked for again before sleeping.
    if (pPendingWork.load() == nullptr && !(udwState.load() & kShutdownRequested)) pevtWake.load()->Wait(INFINITE);
    ZnThreadWork *work = pPendingWork.load();
    if (work == nullptr) continue;  // a wake-up without work: shutdown gets through so
    SetState(kStateWorking);
    work->Work();
    pPendingWork.store(nullptr);
  }
}

bool ZnThread::AssignWork(ZnThreadWork *work, unsigned long) {
  if (udwState.load() & kStateWorking) return false;
  pPendingWork.store(work);
  ZnEvent *wake = pevtWake.load();
  return wake == nullptr || wake->Signal();
}

void ZnThread::SignalShutdown(bool wait) {
  ZnPrimitiveThreadWaitObject *waiter = wait && pPrimitive != nullptr ? pPrimitive->GetWaitObject() : nullptr;
  // Once the request is in, a self-deleting thread may be gone at any
  // moment: what touches this object is done while the request is not in
  // yet, for the state it goes in on, and the wake-up goes through a share
  // of the event of our own.
  std::optional<ZnEvent> wake;
  ZnULong before = udwState.load();
  do {
    if (IsIdle(before)) {
      pPendingWork.store(nullptr);
      ZnEvent const *wakeEvent = pevtWake.load();
      if (!wake && wakeEvent != nullptr) wake.emplace(*wakeEvent);
    }
  } while (!udwState.compare_exchange_weak(before, before | kShutdownRequested));
  if (IsIdle(before) && wake) wake->Signal();
  if (waiter != nullptr) {
    waiter->Wait(INFINITE);
    delete waiter;
  }
}

bool ZnThread::WaitForThreadToExit(unsigned long milliseconds) {
  // The original leaves the wait object (and its handle) behind on each
  // call; it is released here.
  ZnPrimitiveThreadWaitObject *waiter = pPrimitive != nullptr ? pPrimitive->GetWaitObject() : nullptr;
  bool const ended = waiter == nullptr || waiter->Wait(milliseconds);
  delete waiter;
  return ended;
}

bool ZnThread::PostThreadMessageA(unsigned int message, unsigned int wParam, long lParam) {
  return znutil::platform::PostThreadMessageA(static_cast<DWORD>(GetId()), message, wParam, lParam);
}

void ZnThread::SetPriority(int level) {
  if (pPrimitive != nullptr) pPrimitive->SetPriority(level);
}

void ZnThread::Suspend() {
  if (pPrimitive != nullptr) pPrimitive->Suspend();
}

void ZnThread::Resume() {
  if (pPrimitive != nullptr) pPrimitive->Resume();
}

void ZnThread::Terminate(int exitCode) {
  if (pPrimitive != nullptr) pPrimitive->Terminate(exitCode);
}
