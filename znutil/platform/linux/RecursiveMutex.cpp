// The recursive mutex over a pthread mutex kept in opaque storage.
//
// A thread that holds any of these mutexes cannot be cancelled (a
// TerminateThread): the cancellation waits until the thread has left its
// last one, so that no library lock is ever left held by a dead thread.
#include <znutil/platform/RecursiveMutex.h>

#include <new>
#include <pthread.h>

#include <znutil/platform/ThreadLocal.h>

namespace znutil {
namespace platform {
namespace {

static_assert(sizeof(pthread_mutex_t) <= 40, "RecursiveMutex storage is too small");
static_assert(alignof(pthread_mutex_t) <= 8, "RecursiveMutex storage is misaligned");

pthread_mutex_t *Native(unsigned char *storage) { return std::launder(reinterpret_cast<pthread_mutex_t *>(storage)); }

// How many times the thread holds these mutexes, and its cancellation
// state from before it took the first one.
ZNUTIL_THREAD_LOCAL unsigned tlsHeld = 0;
ZNUTIL_THREAD_LOCAL int tlsCancelState = PTHREAD_CANCEL_ENABLE;

}  // namespace

RecursiveMutex::RecursiveMutex() {
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutex_init(new (storage_) pthread_mutex_t, &attributes);
  pthread_mutexattr_destroy(&attributes);
}

RecursiveMutex::~RecursiveMutex() { pthread_mutex_destroy(Native(storage_)); }

void RecursiveMutex::Lock() {
  if (tlsHeld++ == 0) pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &tlsCancelState);
  pthread_mutex_lock(Native(storage_));
}

void RecursiveMutex::Unlock() {
  pthread_mutex_unlock(Native(storage_));
  if (--tlsHeld == 0) pthread_setcancelstate(tlsCancelState, nullptr);
}

}  // namespace platform
}  // namespace znutil
