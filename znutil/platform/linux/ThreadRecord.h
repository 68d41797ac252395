// What a thread handle stands for on Linux: one reference-counted record
// per thread, shared by every handle to the thread and by the thread itself,
// so that it outlives whichever of them goes last.
#ifndef ZNUTIL_PLATFORM_LINUX_THREADRECORD_H
#define ZNUTIL_PLATFORM_LINUX_THREADRECORD_H

#include <atomic>
#include <cstdint>
#include <deque>
#include <pthread.h>

#include <znutil/platform/Event.h>
#include <znutil/platform/Thread.h>
#include <znutil/platform/linux/HandleObject.h>

namespace znutil {
namespace platform {

struct ThreadRecord {
  explicit ThreadRecord(bool ownQueue);
  ~ThreadRecord();
  ThreadRecord(ThreadRecord const &) = delete;
  ThreadRecord &operator=(ThreadRecord const &) = delete;

  std::atomic<std::int32_t> references{1};
  pthread_t thread{};
  DWORD id = 0;
  int startNice = 0;  // the nice value that the priority levels are relative to
  Event exited{true};

  // Suspending, resuming, cancelling and the thread's own start and end
  // take `control` in turn. The thread itself takes it only at its start
  // gate and to mark its end, never while it could be asked to park.
  pthread_mutex_t control;
  pthread_cond_t gate;   // a thread started suspended waits here
  bool started = false;  // past the gate; from then on it is parked by signal
  bool ended = false;    // no signal or cancellation may reach it any more

  // The suspend count times 2, plus kInHandler while a park signal is on
  // its way, its handler runs, or the thread is parked. Only `control`
  // holders change the count; the thread clears kInHandler when it stops
  // parking (or puts the park off to the end of a seam section, setting it
  // again when it parks then). The parked thread sleeps on this word.
  std::atomic<std::uint32_t> suspendWord{0};
  static constexpr std::uint32_t kInHandler = 1;
  static constexpr std::uint32_t kOne = 2;
  std::atomic<std::uint32_t> parkings{0};  // park signals taken so far

  // The message queue, for threads the library starts.
  bool ownQueue;
  pthread_mutex_t queueLock;
  pthread_cond_t queueChanged;
  std::deque<ThreadMessage> queue;
};

/// One reference more; yields the record.
ThreadRecord *Acquire(ThreadRecord *record);

/// One reference fewer; the last one frees the record.
void Release(ThreadRecord *record);

/// A HANDLE to a thread.
class ThreadHandleObject final : public HandleObject {
 public:
  explicit ThreadHandleObject(ThreadRecord *record) : record_(record) {}
  ~ThreadHandleObject() override { Release(record_); }
  ThreadRecord *Record() const { return record_; }

 private:
  ThreadRecord *record_;
};

/// The record behind a thread handle, or null.
inline ThreadRecord *RecordOf(HANDLE handle) {
  auto *thread = dynamic_cast<ThreadHandleObject *>(ObjectOf(handle));
  return thread != nullptr ? thread->Record() : nullptr;
}

/// The calling thread's record, or null if it has none yet. Safe to read
/// in a signal handler.
ThreadRecord *CurrentRecord();

/// Message queues by thread id, for PostThreadMessageA.
void RegisterQueue(ThreadRecord *record);
void UnregisterQueue(ThreadRecord *record);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_LINUX_THREADRECORD_H
