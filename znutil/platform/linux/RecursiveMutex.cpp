// The recursive mutex over a pthread mutex kept in opaque storage.
#include <znutil/platform/RecursiveMutex.h>

#include <new>
#include <pthread.h>

namespace znutil {
namespace platform {
namespace {

static_assert(sizeof(pthread_mutex_t) <= 40, "RecursiveMutex storage is too small");
static_assert(alignof(pthread_mutex_t) <= 8, "RecursiveMutex storage is misaligned");

pthread_mutex_t *Native(unsigned char *storage) { return std::launder(reinterpret_cast<pthread_mutex_t *>(storage)); }

}  // namespace

RecursiveMutex::RecursiveMutex() {
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutex_init(new (storage_) pthread_mutex_t, &attributes);
  pthread_mutexattr_destroy(&attributes);
}

RecursiveMutex::~RecursiveMutex() { pthread_mutex_destroy(Native(storage_)); }

void RecursiveMutex::Lock() { pthread_mutex_lock(Native(storage_)); }

void RecursiveMutex::Unlock() { pthread_mutex_unlock(Native(storage_)); }

}  // namespace platform
}  // namespace znutil
