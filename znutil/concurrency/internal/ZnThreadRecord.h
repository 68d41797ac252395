// The per-thread record behind ZnThread's thread data: the thread's
// ZnThread and its bag of named values. Not part of the interface.
#ifndef ZNUTIL_CONCURRENCY_INTERNAL_ZNTHREADRECORD_H
#define ZNUTIL_CONCURRENCY_INTERNAL_ZNTHREADRECORD_H

#include <znutil/containers/ZnDictionary.h>

class ZnThread;

namespace znutil {
namespace detail {

struct ZnThreadRecord {
  explicit ZnThreadRecord(ZnThread *thread) : pThread(thread), dictThreadData(7) { dictThreadData.MakeDynamic(75); }

  ZnThread *pThread;
  ZnDictionary dictThreadData;
};

/// Tells the calling thread's detach that the thread has given its
/// allocator heap back, so that the detach gives back again any heap that
/// freeing the record binds.
void MarkHeapGivenBack();

/// The thread attach: makes the calling thread's data, bound to no
/// ZnThread, unless data was made on this thread before. Called at the
/// library's per-thread entry points.
void AttachThread();

/// Sets the work that each thread's detach does before it destroys the
/// thread's data.
void SetThreadDetachWork(void (*work)());

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_CONCURRENCY_INTERNAL_ZNTHREADRECORD_H
