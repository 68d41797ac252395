// Small helpers over pthread mutexes and condition variables that the Linux
// code of the seam shares: a scoped lock, a deadline on the monotonic clock,
// a scope in which the calling thread cannot be cancelled, and one in which
// it does not park for SuspendThread.
//
// Thread cancellation unwinds the stack, so every lock that is held across a
// cancellation point (a condition wait) is released by a destructor.
#ifndef ZNUTIL_PLATFORM_LINUX_POSIXSYNC_H
#define ZNUTIL_PLATFORM_LINUX_POSIXSYNC_H

#include <cerrno>
#include <cstdint>
#include <pthread.h>
#include <time.h>

#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

// The seam's locks stand for kernel objects, which a suspended thread
// cannot hold up. So a thread holds them only inside seam sections: a park
// signal that arrives in one is taken as a suspension at once, but the
// thread parks only when its last section ends, before it returns to its
// caller's code (ThreadSuspend.cpp). Sections nest.
void EnterSeamSection();
void LeaveSeamSection();

class SeamSection {
 public:
  SeamSection() { EnterSeamSection(); }
  ~SeamSection() { LeaveSeamSection(); }
  SeamSection(SeamSection const &) = delete;
  SeamSection &operator=(SeamSection const &) = delete;
};

/// A held mutex of the seam, inside a seam section of its own.
class Locked {
 public:
  enum Adopt { kAlreadyHeld };
  explicit Locked(pthread_mutex_t &mutex) : mutex_(mutex) { pthread_mutex_lock(&mutex_); }
  Locked(pthread_mutex_t &mutex, Adopt) : mutex_(mutex) {}
  ~Locked() { pthread_mutex_unlock(&mutex_); }
  Locked(Locked const &) = delete;
  Locked &operator=(Locked const &) = delete;

 private:
  SeamSection const section_;  // entered before the lock, left after it
  pthread_mutex_t &mutex_;
};

/// The point `milliseconds` from now on the monotonic clock.
inline timespec MonotonicAfter(std::uint32_t milliseconds) {
  timespec at;
  clock_gettime(CLOCK_MONOTONIC, &at);
  at.tv_sec += milliseconds / 1000;
  at.tv_nsec += static_cast<long>(milliseconds % 1000) * 1000000L;
  if (at.tv_nsec >= 1000000000L) {
    at.tv_nsec -= 1000000000L;
    ++at.tv_sec;
  }
  return at;
}

/// A point `milliseconds` from now on the monotonic clock; INFINITE never comes.
class Deadline {
 public:
  explicit Deadline(std::uint32_t milliseconds)
      : infinite_(milliseconds == INFINITE), at_(MonotonicAfter(milliseconds)) {}

  /// Sleeps on `changed` (made by InitMonotonicCondition) with `mutex` held
  /// until woken; false once the deadline has passed.
  bool Sleep(pthread_cond_t &changed, pthread_mutex_t &mutex) const {
    if (infinite_) return pthread_cond_wait(&changed, &mutex) == 0;
    return pthread_cond_timedwait(&changed, &mutex, &at_) != ETIMEDOUT;
  }

 private:
  bool infinite_;
  timespec at_;
};

/// A condition variable whose timed waits use the monotonic clock.
inline void InitMonotonicCondition(pthread_cond_t *condition) {
  pthread_condattr_t attributes;
  pthread_condattr_init(&attributes);
  pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC);
  pthread_cond_init(condition, &attributes);
  pthread_condattr_destroy(&attributes);
}

/// While it lives, the calling thread cannot be cancelled; a cancellation
/// asked for meanwhile takes effect at the next cancellation point after it.
class CancellationOff {
 public:
  CancellationOff() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &previous_); }
  ~CancellationOff() { pthread_setcancelstate(previous_, nullptr); }
  CancellationOff(CancellationOff const &) = delete;
  CancellationOff &operator=(CancellationOff const &) = delete;

 private:
  int previous_;
};

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_LINUX_POSIXSYNC_H
