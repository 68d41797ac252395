// ZnPrimitiveThreadWaitObject: something to wait on for a thread's end,
// which stays good after the thread's ZnThread is gone. This base waits
// for nothing.
#ifndef ZNUTIL_CONCURRENCY_ZNPRIMITIVETHREADWAITOBJECT_H
#define ZNUTIL_CONCURRENCY_ZNPRIMITIVETHREADWAITOBJECT_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnPrimitiveThreadWaitObject {
 public:
  virtual ~ZnPrimitiveThreadWaitObject() {}
  /// Waits for the thread's end for at most `milliseconds` (0xFFFFFFFF for
  /// ever); false only if that time ran out. The base yields false at once.
  virtual bool Wait(unsigned long milliseconds);
};

#endif  // ZNUTIL_CONCURRENCY_ZNPRIMITIVETHREADWAITOBJECT_H
