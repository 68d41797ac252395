#include <znutil/concurrency/ZnLock.h>

#include <znutil/platform/Scheduling.h>

bool ZnLock::LockContended(long timeout) {
  long remaining = timeout;
  for (;;) {
    if (timeout != -1 && remaining <= 0) return false;
    znutil::platform::YieldProcessor();
    remaining -= 10;
    if (iWord.exchange(1) == 0) return true;
  }
}

bool ZnLock::Test() {
  // Writes back what it read, as the original exchange does; a lock taken
  // in between is not lost because only the value 1 can be written back.
  std::int32_t const value = iWord.load();
  if (value != 0) iWord.exchange(value);
  return value == 0;
}
