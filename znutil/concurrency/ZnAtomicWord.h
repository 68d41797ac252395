// ZnAtomicWord: a signed 32-bit word with atomic increment, decrement and
// exchange. Reads and copies are plain.
#ifndef ZNUTIL_CONCURRENCY_ZNATOMICWORD_H
#define ZNUTIL_CONCURRENCY_ZNATOMICWORD_H

#include <atomic>
#include <cstdint>

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnAtomicWord {
 public:
  ZnAtomicWord() : iValue(0) {}
  /// Copies the value, not atomically.
  ZnAtomicWord(ZnAtomicWord const &other) : iValue(other.Get()) {}
  ZnAtomicWord &operator=(ZnAtomicWord const &other) {
    iValue.store(other.Get(), std::memory_order_relaxed);
    return *this;
  }

  /// The value at this moment.
  long Get() const { return iValue.load(std::memory_order_relaxed); }
  /// Adds one and yields the new value, wrapping at 32 bits.
  long Increment() { return static_cast<std::int32_t>(iValue.fetch_add(1) + 1u); }
  /// Subtracts one and yields the new value, wrapping at 32 bits.
  long Decrement() { return static_cast<std::int32_t>(iValue.fetch_sub(1) - 1u); }
  /// Stores a new value (truncated to 32 bits) and yields the old one.
  long Set(long value) { return iValue.exchange(static_cast<std::int32_t>(value)); }

 private:
  std::atomic<std::int32_t> iValue;
};

#endif  // ZNUTIL_CONCURRENCY_ZNATOMICWORD_H
