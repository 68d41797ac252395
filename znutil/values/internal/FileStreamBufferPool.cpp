#include <znutil/values/internal/FileStreamBufferPool.h>

#include <cstring>

#include <znutil/concurrency/ZnLock.h>

namespace znutil {
namespace detail {
namespace {

// Idle buffers form a list through their own first bytes, so that giving
// one back needs no allocation.
char *idleHead = nullptr;
std::size_t idleCount = 0;
ZnLock poolLock;

char *NextOf(char *buffer) {
  char *next;
  std::memcpy(&next, buffer, sizeof next);
  return next;
}

class PoolGuard {
 public:
  PoolGuard() { poolLock.Lock(-1); }
  ~PoolGuard() { poolLock.Unlock(); }
  PoolGuard(PoolGuard const &) = delete;
  PoolGuard &operator=(PoolGuard const &) = delete;
};

}  // namespace

char *FileStreamBufferPool::Take() {
  {
    PoolGuard guard;
    if (char *buffer = idleHead) {
      idleHead = NextOf(buffer);
      --idleCount;
      return buffer;
    }
  }
  return new char[kBufferSize];
}

void FileStreamBufferPool::Give(char *buffer) {
  PoolGuard guard;
  std::memcpy(buffer, &idleHead, sizeof idleHead);
  idleHead = buffer;
  ++idleCount;
}

std::size_t FileStreamBufferPool::IdleCount() {
  PoolGuard guard;
  return idleCount;
}

}  // namespace detail
}  // namespace znutil
