// Threads over pthreads. Every thread that a handle names has a
// ThreadRecord; the thread holds one reference to it until its very end,
// which it marks from the destructor of a thread_local binding. A thread
// the library starts makes that binding before anything else, so its
// destructor runs after every other thread_local object of the thread has
// been destroyed, and a wait on the handle ends after the thread's detach
// work, as on Windows. Threads are detached: nobody joins them, and no
// signal or cancellation is sent to a thread once it has marked its end.
#include <znutil/platform/Thread.h>

#include <algorithm>
#include <semaphore.h>
#include <sys/resource.h>
#include <unistd.h>

#include <znutil/platform/ThreadLocal.h>
#include <znutil/platform/linux/PosixSync.h>
#include <znutil/platform/linux/ThreadRecord.h>
#include <znutil/platform/linux/ThreadSuspend.h>

namespace znutil {
namespace platform {
namespace {

// Read by the park signal's handler: a plain pointer, no initialisation.
ZNUTIL_THREAD_LOCAL ThreadRecord *tlsRecord = nullptr;

ZNUTIL_THREAD_LOCAL DWORD tlsThreadId = 0;

// Marks the end of the thread it is bound to when that thread ends.
class ThreadBinding {
 public:
  void Bind(ThreadRecord *record) { record_ = record; }
  ~ThreadBinding() {
    if (record_ == nullptr) return;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    if (record_->ownQueue) UnregisterQueue(record_);
    {
      Locked locked(record_->control);
      record_->ended = true;
    }
    tlsRecord = nullptr;
    record_->exited.Set();
    Release(record_);
  }

 private:
  ThreadRecord *record_ = nullptr;
};

ZNUTIL_THREAD_LOCAL ThreadBinding tlsBinding;

// Makes `record` (which holds a reference for the thread) the calling thread's.
void BindCallingThread(ThreadRecord *record) {
  record->thread = pthread_self();
  record->id = GetCurrentThreadId();
  errno = 0;
  int const nice = getpriority(PRIO_PROCESS, static_cast<id_t>(record->id));
  record->startNice = errno == 0 ? nice : 0;
  PrepareForParkSignal();
  tlsRecord = record;
  tlsBinding.Bind(record);
}

struct StartBlock {
  ThreadRoutine routine;
  void *argument;
  ThreadRecord *record;
  sem_t registered;
};

// A thread started suspended waits here. The wait is a cancellation point,
// so a thread terminated before it was resumed never runs its routine.
void PassGate(ThreadRecord &record) {
  Locked locked(record.control);
  while (record.suspendWord.load() >= ThreadRecord::kOne) pthread_cond_wait(&record.gate, &record.control);
  record.started = true;
}

void *RunThread(void *start) {
  auto *block = static_cast<StartBlock *>(start);
  ThreadRoutine const routine = block->routine;
  void *const argument = block->argument;
  ThreadRecord &record = *block->record;
  UnblockParkSignal();
  BindCallingThread(&record);
  RegisterQueue(&record);
  sem_post(&block->registered);  // the block is gone from here on
  PassGate(record);
  routine(argument);
  // What is left (the thread_local destructors) runs to its end.
  pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
  return nullptr;
}

// The nice value for a priority level, or false for no level.
bool NiceFor(int level, int startNice, int *nice) {
  int offset;
  switch (level) {
    case kThreadPriorityIdle: *nice = 19; return true;
    case kThreadPriorityLowest: offset = 10; break;
    case kThreadPriorityBelowNormal: offset = 5; break;
    case kThreadPriorityNormal: offset = 0; break;
    case kThreadPriorityAboveNormal: offset = -5; break;
    case kThreadPriorityHighest: offset = -10; break;
    case kThreadPriorityTimeCritical: offset = -20; break;
    default: return false;
  }
  *nice = std::clamp(startNice + offset, -20, 19);
  return true;
}

}  // namespace

ThreadRecord::ThreadRecord(bool ownsQueue) : ownQueue(ownsQueue) {
  pthread_mutex_init(&control, nullptr);
  pthread_cond_init(&gate, nullptr);
  pthread_mutex_init(&queueLock, nullptr);
  InitMonotonicCondition(&queueChanged);
}

ThreadRecord::~ThreadRecord() {
  pthread_cond_destroy(&queueChanged);
  pthread_mutex_destroy(&queueLock);
  pthread_cond_destroy(&gate);
  pthread_mutex_destroy(&control);
}

ThreadRecord *Acquire(ThreadRecord *record) {
  record->references.fetch_add(1, std::memory_order_relaxed);
  return record;
}

void Release(ThreadRecord *record) {
  if (record->references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete record;
}

ThreadRecord *CurrentRecord() { return tlsRecord; }

DWORD GetCurrentThreadId() {
  if (tlsThreadId == 0) tlsThreadId = static_cast<DWORD>(gettid());
  return tlsThreadId;
}

// Like the kernel calls they stand for, thread start and the handle calls
// run to their end before the caller parks: a thread suspended in the C
// library's allocator or thread start would hold up every other caller.
HANDLE BeginThread(ThreadRoutine routine, void *argument, bool suspended) {
  SeamSection const section;
  auto *record = new ThreadRecord(/*ownsQueue=*/true);
  record->references.store(2);  // the handle's and the thread's
  if (suspended) record->suspendWord.store(ThreadRecord::kOne);
  StartBlock block{routine, argument, record, {}};
  sem_init(&block.registered, 0, 0);
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
  pthread_t thread;
  bool const started = pthread_create(&thread, &attributes, &RunThread, &block) == 0;
  pthread_attr_destroy(&attributes);
  if (started) {
    CancellationOff const off;  // the new thread reads the block until it posts
    while (sem_wait(&block.registered) != 0) {
    }
  } else {
    delete record;
  }
  sem_destroy(&block.registered);
  return started ? new ThreadHandleObject(record) : nullptr;
}

HANDLE OpenCurrentThread() {
  SeamSection const section;
  if (tlsRecord == nullptr) {
    auto *record = new ThreadRecord(/*ownsQueue=*/false);
    record->started = true;
    BindCallingThread(record);
  }
  return new ThreadHandleObject(Acquire(tlsRecord));
}

HANDLE DuplicateHandle(HANDLE thread) {
  SeamSection const section;
  ThreadRecord *record = RecordOf(thread);
  return record != nullptr ? new ThreadHandleObject(Acquire(record)) : nullptr;
}

WaitResult WaitForThread(HANDLE thread, std::uint32_t milliseconds) {
  ThreadRecord *record = RecordOf(thread);
  return record != nullptr ? record->exited.Wait(milliseconds) : WaitResult::kFailed;
}

bool SetThreadPriority(HANDLE thread, int level) {
  ThreadRecord *record = RecordOf(thread);
  int nice;
  if (record == nullptr || !NiceFor(level, record->startNice, &nice)) return false;
  Locked locked(record->control);
  return !record->ended && setpriority(PRIO_PROCESS, static_cast<id_t>(record->id), nice) == 0;
}

bool TerminateThread(HANDLE thread, DWORD /*exitCode*/) {
  ThreadRecord *record = RecordOf(thread);
  if (record == nullptr) return false;
  Locked locked(record->control);
  if (record->ended) return false;
  // A thread parked by SuspendThread would never reach a cancellation
  // point; one at its start gate is cancelled there.
  if (record->started) ReleaseParked(*record);
  pthread_cancel(record->thread);
  return true;
}

}  // namespace platform
}  // namespace znutil
