// ZnThreadNotify: an observer of a ZnThread's start and end, implemented by
// the program that uses the library; the thread only keeps its pointer.
#ifndef ZNUTIL_CONCURRENCY_ZNTHREADNOTIFY_H
#define ZNUTIL_CONCURRENCY_ZNTHREADNOTIFY_H

#include <znutil/platform/Export.h>

class ZnThread;

class ZNUTIL_API ZnThreadNotify {
 public:
  virtual ~ZnThreadNotify() {}
  /// Called on the thread itself: phase 0 before ThreadEntry runs, phase 1
  /// after it has returned.
  virtual void Notify(int phase, ZnThread *thread) = 0;
};

#endif  // ZNUTIL_CONCURRENCY_ZNTHREADNOTIFY_H
