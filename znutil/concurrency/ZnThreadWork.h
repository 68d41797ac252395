// ZnThreadWork: a piece of work that a ZnThread runs.
//
//   class Flush : public ZnThreadWork {
//    public:
//     void Work() override { ... }     // runs on the worker thread
//   };
//   worker->AssignWork(&flush, 0);
#ifndef ZNUTIL_CONCURRENCY_ZNTHREADWORK_H
#define ZNUTIL_CONCURRENCY_ZNTHREADWORK_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnThreadWork {
 public:
  virtual ~ZnThreadWork() {}
  /// Runs on the worker thread that was assigned the work.
  virtual void Work() = 0;
};

#endif  // ZNUTIL_CONCURRENCY_ZNTHREADWORK_H
