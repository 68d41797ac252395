// ZnNativeThread: the system thread behind a ZnThread. The ZnThread
// constructor makes it; it starts the thread (or adopts the calling one)
// and keeps the thread's handle.
#ifndef ZNUTIL_CONCURRENCY_ZNNATIVETHREAD_H
#define ZNUTIL_CONCURRENCY_ZNNATIVETHREAD_H

#include <znutil/concurrency/ZnPrimitiveThread.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

class ZNUTIL_API ZnNativeThread : public ZnPrimitiveThread {
 public:
  /// With native flag 8 adopts the calling thread for `owner`; otherwise
  /// starts a new thread in the owner's entry routine, suspended with flag 2.
  /// The new thread may run before this returns.
  ZnNativeThread(ZnThread *owner, ZnULong nativeFlags);
  /// A second handle to the thread of `other`, for a copy of its owner.
  ZnNativeThread(ZnNativeThread const &other, ZnThread *owner);
  /// Closes the handle; never stops the thread.
  ~ZnNativeThread() override;

  /// Levels 0 to 5: lowest, below normal, normal, above normal, highest,
  /// time critical. Any other level is ignored.
  void SetPriority(int level) override;
  /// Sets the owner's suspended mark only when the thread was already
  /// suspended (or the call failed); a first suspend leaves it clear.
  /// Deliberate: the mark is a hint that nothing reads.
  void Suspend() override;
  /// Clears the suspended mark only when the thread was not suspended at all.
  void Resume() override;
  void Terminate(int exitCode) override;
  void Yield() override;
  /// A new ZnNativeThreadWaitObject on the thread.
  ZnPrimitiveThreadWaitObject *GetWaitObject() override;

 private:
  HANDLE hThread;
};

#endif  // ZNUTIL_CONCURRENCY_ZNNATIVETHREAD_H
