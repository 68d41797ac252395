// ZnLock: a spin lock that yields the processor between tries.
//
//   ZnLock lock;
//   if (lock.Lock(100)) { ...; lock.Unlock(); }
//
// The time limit counts tries, not time: each try after the first costs 10
// units, so Lock(0) tries once, Lock(10) twice and Lock(25) four times, and
// -1 tries for ever. This is deliberate. The lock is neither recursive nor
// owner-aware, and it guards only short regions.
#ifndef ZNUTIL_CONCURRENCY_ZNLOCK_H
#define ZNUTIL_CONCURRENCY_ZNLOCK_H

#include <atomic>
#include <cstdint>

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnLock {
 public:
  /// A free lock.
  ZnLock() : iWord(0) {}
  /// Copies the state of the word, held or free.
  ZnLock(ZnLock const &other) : iWord(other.iWord.load(std::memory_order_relaxed)) {}
  ZnLock &operator=(ZnLock const &other) {
    iWord.store(other.iWord.load(std::memory_order_relaxed), std::memory_order_relaxed);
    return *this;
  }

  /// Takes the lock within `timeout` units (10 a try; -1 waits for ever).
  bool Lock(long timeout) { return iWord.exchange(1) == 0 || LockContended(timeout); }
  /// Frees the lock, whoever calls it; freeing a free lock is harmless.
  void Unlock() { iWord.store(0, std::memory_order_release); }
  /// True if the lock is free at this moment; never takes it.
  bool Test();

 private:
  bool LockContended(long timeout);

  std::atomic<std::int32_t> iWord;
};

#endif  // ZNUTIL_CONCURRENCY_ZNLOCK_H
