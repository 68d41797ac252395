// The records of ZnFixedBlockAllocator: thread heaps, size classes, chunk
// and block headers. Not part of the interface.
#ifndef ZNUTIL_MEMORY_INTERNAL_ZNFIXEDBLOCKTHREADHEAP_H
#define ZNUTIL_MEMORY_INTERNAL_ZNFIXEDBLOCKTHREADHEAP_H

#include <atomic>
#include <cstdint>

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

/// One block size of one thread heap. Only the thread bound to the heap
/// carves, pops and pushes its own frees, with no lock; other threads push
/// their frees onto a list of their own, which the bound thread takes over
/// whole before its next pop or push.
struct ZnFixedBlockSizeClass {
  std::uint32_t udwBlockSize;
  std::uint32_t udwStride;  // block size plus header, rounded up to 16
  ZnFixedBlockHeader *pFreeHead = nullptr;
  std::uint32_t udwUnusedCount;
  char *pNextUnused;
  ZnFixedBlockChunk *pFirstChunk;
  ZnFixedBlockChunk *pLastChunk;
  // Newest first. On a cache line of its own, so that pushes from other
  // threads do not disturb the bound thread's fields.
  alignas(64) std::atomic<ZnFixedBlockHeader *> pRemoteFreeHead{nullptr};
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
