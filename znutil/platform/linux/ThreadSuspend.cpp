// SuspendThread and ResumeThread with Windows suspend counts.
//
// A thread waiting at its start gate is held there by the count alone. A
// running thread is parked by a signal: its handler counts itself in
// `parkings`, which the suspender waits for, and then sleeps on a futex of
// the suspend word until the count is 0 again; ResumeThread wakes it
// there. A park signal is sent only when the thread is not already in the
// handler (kInHandler clear), so there is never more than one in flight.
//
// A signal that finds the thread in a seam section (holding, or about to
// take, a lock of the seam) counts as taken, so that SuspendThread returns,
// but the thread parks only when its last section ends: before it runs any
// more of its caller's code, and holding no lock that others need. It may
// meanwhile finish what it was doing inside the seam, a wait included, as
// a suspended thread's wait on Windows can be satisfied.
//
// The handler makes only raw system calls and atomic operations: it is
// async-signal-safe, and, under ThreadSanitizer, it never enters the
// runtime's interceptors, which could otherwise run other pending signal
// handlers inside it and leave the thread with every signal blocked. It
// saves errno and turns cancellation off while it runs.
#include <znutil/platform/Thread.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <sched.h>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <znutil/platform/ThreadLocal.h>
#include <znutil/platform/linux/PosixSync.h>
#include <znutil/platform/linux/ThreadRecord.h>
#include <znutil/platform/linux/ThreadSuspend.h>

namespace znutil {
namespace platform {
namespace {

int ParkSignal() { return SIGRTMIN + 4; }

static_assert(sizeof(std::atomic<std::uint32_t>) == sizeof(std::uint32_t), "futex words are plain 32-bit words");

// Sleeps while `word` holds `expected` (or until a wake or a signal).
void FutexWait(std::atomic<std::uint32_t> &word, std::uint32_t expected) {
  syscall(SYS_futex, reinterpret_cast<std::uint32_t *>(&word), FUTEX_WAIT_PRIVATE, expected, nullptr, nullptr, 0);
}

void FutexWakeAll(std::atomic<std::uint32_t> &word) {
  syscall(SYS_futex, reinterpret_cast<std::uint32_t *>(&word), FUTEX_WAKE_PRIVATE, INT_MAX, nullptr, nullptr, 0);
}

// Open seam sections of this thread, and whether a park waits for their end.
ZNUTIL_THREAD_LOCAL std::atomic<std::uint32_t> tlsSeamDepth{0};
ZNUTIL_THREAD_LOCAL std::atomic<bool> tlsParkDeferred{false};

// Tells the suspender that its park signal has been taken.
void AcknowledgePark(ThreadRecord &record) {
  record.parkings.fetch_add(1);
  FutexWakeAll(record.parkings);
}

// Sleeps while the suspend count is above 0, with kInHandler set; clears it
// together with seeing the count at 0.
void SleepWhileSuspended(ThreadRecord &record) {
  for (;;) {
    std::uint32_t word = record.suspendWord.load();
    if (word >= ThreadRecord::kOne) {
      FutexWait(record.suspendWord, word);
    } else if (record.suspendWord.compare_exchange_weak(word, word & ~ThreadRecord::kInHandler)) {
      return;
    }
  }
}

void OnPark(int) {
  int const savedErrno = errno;
  int cancelState;
  pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelState);
  if (ThreadRecord *record = CurrentRecord()) {
    AcknowledgePark(*record);
    if (tlsSeamDepth.load(std::memory_order_relaxed) == 0) {
      SleepWhileSuspended(*record);
    } else {
      tlsParkDeferred.store(true, std::memory_order_relaxed);
      record->suspendWord.fetch_and(~ThreadRecord::kInHandler);
    }
  }
  pthread_setcancelstate(cancelState, nullptr);
  errno = savedErrno;
}

// The park that a signal inside a seam section put off, now that the last
// section has ended.
void ParkDeferred() {
  tlsParkDeferred.store(false, std::memory_order_relaxed);
  ThreadRecord *record = CurrentRecord();
  if (record == nullptr) return;
  std::uint32_t word = record->suspendWord.load();
  do {
    // Resumed meanwhile; or suspended again with a signal on its way, whose
    // handler parks the thread.
    if (word < ThreadRecord::kOne || (word & ThreadRecord::kInHandler)) return;
  } while (!record->suspendWord.compare_exchange_weak(word, word | ThreadRecord::kInHandler));
  SleepWhileSuspended(*record);
}

bool InstallHandler() {
  struct sigaction action = {};
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  action.sa_handler = &OnPark;
  sigaction(ParkSignal(), &action, nullptr);
  return true;
}

void EnsureHandler() {
  static bool const installed = InstallHandler();
  (void)installed;
}

// Waits until the handler has counted the park signal sent after
// `parkings` was read.
void AwaitPark(ThreadRecord &record, std::uint32_t parkings) {
  while (record.parkings.load() == parkings) FutexWait(record.parkings, parkings);
}

// The count has come down to 0 (`word` is the value before): let it run.
void Wake(ThreadRecord &record, std::uint32_t word) {
  if (!record.started) {
    pthread_cond_broadcast(&record.gate);
  } else if (word & ThreadRecord::kInHandler) {
    FutexWakeAll(record.suspendWord);
  }
}

}  // namespace

void EnterSeamSection() {
  tlsSeamDepth.store(tlsSeamDepth.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
  std::atomic_signal_fence(std::memory_order_seq_cst);
}

void LeaveSeamSection() {
  std::atomic_signal_fence(std::memory_order_seq_cst);
  std::uint32_t const depth = tlsSeamDepth.load(std::memory_order_relaxed) - 1;
  tlsSeamDepth.store(depth, std::memory_order_relaxed);
  std::atomic_signal_fence(std::memory_order_seq_cst);
  if (depth == 0 && tlsParkDeferred.load(std::memory_order_relaxed)) ParkDeferred();
}

void UnblockParkSignal() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, ParkSignal());
  pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

void PrepareForParkSignal() {
  // Signal 0 sends nothing. Under ThreadSanitizer it makes the runtime set
  // up the thread's signal state now: set up lazily, that state can lose
  // the first signal that arrives while it is being made.
  pthread_kill(pthread_self(), 0);
}

void ReleaseParked(ThreadRecord &record) {
  std::uint32_t const word = record.suspendWord.fetch_and(ThreadRecord::kInHandler);
  if (word >= ThreadRecord::kOne) Wake(record, word);
  // A cancellation must not unwind the thread out of the handler, which
  // may have interrupted a system call: wait until it has left.
  while (record.suspendWord.load() & ThreadRecord::kInHandler) sched_yield();
}

DWORD SuspendThread(HANDLE thread) {
  ThreadRecord *record = RecordOf(thread);
  if (record == nullptr) return kSuspendFailed;
  EnsureHandler();
  bool const self = record == CurrentRecord();
  DWORD previous;
  bool signalled;
  std::uint32_t parkings;
  {
    Locked locked(record->control);
    if (record->ended) return kSuspendFailed;
    parkings = record->parkings.load();
    std::uint32_t word = record->suspendWord.load();
    do {
      previous = word / ThreadRecord::kOne;
      if (previous >= kMaximumSuspendCount) return kSuspendFailed;
      signalled = previous == 0 && (word & ThreadRecord::kInHandler) == 0 && record->started;
    } while (!record->suspendWord.compare_exchange_weak(
        word, word + ThreadRecord::kOne + (signalled ? ThreadRecord::kInHandler : 0)));
    // Sent under the lock, so that the thread cannot have marked its end.
    if (signalled && !self) pthread_kill(record->thread, ParkSignal());
  }
  if (signalled) {
    // A thread that parks itself must not hold the lock that its resumer takes.
    if (self) pthread_kill(pthread_self(), ParkSignal());
    AwaitPark(*record, parkings);
  }
  return previous;
}

DWORD ResumeThread(HANDLE thread) {
  ThreadRecord *record = RecordOf(thread);
  if (record == nullptr) return kSuspendFailed;
  Locked locked(record->control);
  if (record->ended) return kSuspendFailed;
  DWORD const previous = record->suspendWord.load() / ThreadRecord::kOne;
  if (previous == 0) return 0;
  // With a count above 0 the handler does not change the word.
  std::uint32_t const word = record->suspendWord.fetch_sub(ThreadRecord::kOne);
  if (previous == 1) Wake(*record, word);
  return previous;
}

}  // namespace platform
}  // namespace znutil
