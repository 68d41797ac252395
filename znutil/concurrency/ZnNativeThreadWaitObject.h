// ZnNativeThreadWaitObject: waits for a system thread's end through a
// handle of its own, duplicated from the thread's, so that it stays good
// even when a self-deleting thread has deleted its ZnThread and closed that
// handle. The caller deletes it, which closes the handle.
#ifndef ZNUTIL_CONCURRENCY_ZNNATIVETHREADWAITOBJECT_H
#define ZNUTIL_CONCURRENCY_ZNNATIVETHREADWAITOBJECT_H

#include <znutil/concurrency/ZnPrimitiveThreadWaitObject.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

class ZNUTIL_API ZnNativeThreadWaitObject : public ZnPrimitiveThreadWaitObject {
 public:
  /// Duplicates `hThreadToWaitFor`; a null handle gives a null one.
  explicit ZnNativeThreadWaitObject(HANDLE hThreadToWaitFor);
  ~ZnNativeThreadWaitObject() override;
  ZnNativeThreadWaitObject(ZnNativeThreadWaitObject const &) = delete;
  ZnNativeThreadWaitObject &operator=(ZnNativeThreadWaitObject const &) = delete;

  /// True unless the time ran out: a wait that fails (no thread) is true.
  bool Wait(unsigned long milliseconds) override;

 private:
  HANDLE hThread;
};

#endif  // ZNUTIL_CONCURRENCY_ZNNATIVETHREADWAITOBJECT_H
