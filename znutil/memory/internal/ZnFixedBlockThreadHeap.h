// The records of ZnFixedBlockAllocator: thread heaps, size classes, chunk
// and block headers. Not part of the interface.
#ifndef ZNUTIL_MEMORY_INTERNAL_ZNFIXEDBLOCKTHREADHEAP_H
#define ZNUTIL_MEMORY_INTERNAL_ZNFIXEDBLOCKTHREADHEAP_H

#include <atomic>
#include <cstdint>

#include <znutil/concurrency/ZnLock.h>

class ZnMemBlock;

namespace znutil {
namespace detail {

/// The 16 bytes before every block handed out.
struct ZnFixedBlockHeader {
  std::uint8_t ucStateTag;
  std::uint8_t ucHeapIndex;
  std::uint16_t uwSizeClassIndex;
  std::uint32_t udwUnused;
  ZnFixedBlockHeader *pNext;
};
static_assert(sizeof(ZnFixedBlockHeader) == 16, "the block header is 16 bytes");

/// The start of each chunk's memory, padded so that blocks stay 16-byte aligned.
struct alignas(16) ZnFixedBlockChunk {
  ZnFixedBlockChunk *pNext;
  ZnMemBlock *pOwner;
  std::uint32_t udwBlockCount;
};
static_assert(sizeof(ZnFixedBlockChunk) % 16 == 0, "the chunk header keeps blocks aligned");

/// One block size of one thread heap. Only the owning thread carves and
/// pops; any thread pushes, under the lock.
struct ZnFixedBlockSizeClass {
  std::uint32_t udwBlockSize;
  std::uint32_t udwStride;  // block size plus header, rounded up to 16
  std::atomic<ZnFixedBlockHeader *> pFreeHead{nullptr};
  std::uint32_t udwUnusedCount;
  char *pNextUnused;
  // Approximate by design: raised without the lock, nothing depends on it.
  std::atomic<std::uint32_t> udwBlocksInUse{0};
  ZnLock lock;
  ZnFixedBlockChunk *pFirstChunk;
  ZnFixedBlockChunk *pLastChunk;
};

/// The allocator state of one thread, or of none while orphaned.
struct ZnFixedBlockThreadHeap {
  std::atomic<ZnFixedBlockSizeClass *> apSizeClasses[256] = {};
  std::uint8_t ucHeapIndex = 0;
  std::atomic<std::uint32_t> udwOrphaned{0};
  // Heaps that found the table full are kept on a list of their own.
  ZnFixedBlockThreadHeap *pNextUnregistered = nullptr;
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_MEMORY_INTERNAL_ZNFIXEDBLOCKTHREADHEAP_H
