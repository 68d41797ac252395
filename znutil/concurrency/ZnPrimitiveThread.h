// ZnPrimitiveThread: the system's side of a ZnThread, the seam at which a
// thread primitive plugs in. This base does nothing; ZnNativeThread is the
// one implementation.
#ifndef ZNUTIL_CONCURRENCY_ZNPRIMITIVETHREAD_H
#define ZNUTIL_CONCURRENCY_ZNPRIMITIVETHREAD_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

class ZnThread;
class ZnPrimitiveThreadWaitObject;

class ZNUTIL_API ZnPrimitiveThread {
 public:
  /// Native flags: 8 adopts the calling thread, 4 starts a new one, 2 with
  /// 4 starts it suspended.
  ZnPrimitiveThread(ZnThread *owner, ZnULong nativeFlags) : pOwner(owner), udwNativeFlags(nativeFlags) {}
  virtual ~ZnPrimitiveThread() {}
  ZnPrimitiveThread(ZnPrimitiveThread const &) = delete;
  ZnPrimitiveThread &operator=(ZnPrimitiveThread const &) = delete;

  /// Sets the priority from a level 0 (lowest) to 5 (time critical).
  virtual void SetPriority(int) {}
  virtual void Suspend() {}
  virtual void Resume() {}
  /// Ends the thread at once; no clean-up of the thread's own runs.
  virtual void Terminate(int) {}
  /// Lets another thread run.
  virtual void Yield() {}
  /// Something to wait on for the thread's end, for the caller to delete;
  /// null here.
  virtual ZnPrimitiveThreadWaitObject *GetWaitObject() { return nullptr; }

 protected:
  ZnThread *pOwner;
  ZnULong udwNativeFlags;
};

#endif  // ZNUTIL_CONCURRENCY_ZNPRIMITIVETHREAD_H
