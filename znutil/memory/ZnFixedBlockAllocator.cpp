#include <znutil/memory/ZnFixedBlockAllocator.h>

#include <cstdlib>
#include <new>

#include <znutil/concurrency/ZnCriticalSection.h>
#include <znutil/memory/ZnMemBlock.h>
#include <znutil/memory/internal/ZnFixedBlockThreadHeap.h>
#include <znutil/platform/ThreadLocal.h>
#include <znutil/platform/VirtualMemory.h>

using znutil::detail::ZnFixedBlockChunk;
using znutil::detail::ZnFixedBlockHeader;
using znutil::detail::ZnFixedBlockSizeClass;
using znutil::detail::ZnFixedBlockThreadHeap;

namespace {

constexpr unsigned long kLargeSize = 1024;
constexpr unsigned kPagesPerChunk = 256;
constexpr std::uint8_t kTagInUse = 5;
constexpr std::uint8_t kTagLarge = 6;
constexpr std::uint8_t kTagFree = 8;
constexpr std::uint8_t kLargeBit = 2;

ZNUTIL_THREAD_LOCAL ZnFixedBlockThreadHeap *tlsHeap = nullptr;

// Slots are written once, under the table lock, and then read without it.
std::atomic<ZnFixedBlockThreadHeap *> heapTable[ZnFixedBlockAllocator::kHeapTableSize];
ZnFixedBlockThreadHeap *unregisteredHeaps = nullptr;

ZnCriticalSection &TableLock() {
  static ZnCriticalSection *lock = new ZnCriticalSection;
  return *lock;
}

ZnFixedBlockThreadHeap *AdoptOrphan() {
  for (auto &slot : heapTable) {
    ZnFixedBlockThreadHeap *heap = slot.load(std::memory_order_relaxed);
    if (heap != nullptr && heap->udwOrphaned.load(std::memory_order_acquire) == 1) {
      heap->udwOrphaned.store(0, std::memory_order_relaxed);
      return heap;
    }
  }
  return nullptr;
}

void Register(ZnFixedBlockThreadHeap *heap) {
  for (unsigned index = 0; index < ZnFixedBlockAllocator::kHeapTableSize; ++index) {
    if (heapTable[index].load(std::memory_order_relaxed) == nullptr) {
      heap->ucHeapIndex = static_cast<std::uint8_t>(index);
      heapTable[index].store(heap, std::memory_order_release);
      return;
    }
  }
  // The table is full: the heap keeps index 0 and can never be adopted.
  heap->pNextUnregistered = unregisteredHeaps;
  unregisteredHeaps = heap;
}

ZnFixedBlockThreadHeap *BindHeap(bool adopt) {
  ZnCriticalSection &lock = TableLock();
  lock.Enter();
  ZnFixedBlockThreadHeap *heap = adopt ? AdoptOrphan() : nullptr;
  if (heap == nullptr) {
    heap = new ZnFixedBlockThreadHeap;
    Register(heap);
  }
  lock.Leave();
  tlsHeap = heap;
  return heap;
}

inline ZnFixedBlockThreadHeap *CurrentHeap() {
  ZnFixedBlockThreadHeap *heap = tlsHeap;
  return heap != nullptr ? heap : BindHeap(true);
}

ZnFixedBlockChunk *CreateChunk(std::uint32_t stride) {
  unsigned int const page = static_cast<unsigned int>(ZnMemBlock::GetPageSize());
  void *address = nullptr;
  unsigned int committed = 0;
  ZnMemBlock *block = new ZnMemBlock(kPagesPerChunk * page, ZnMemBlockGrowUp, page, &address, &committed, nullptr);
  if (address == nullptr) {
    delete block;
    throw std::bad_alloc();
  }
  std::uint32_t const blocks = static_cast<std::uint32_t>((committed - sizeof(ZnFixedBlockChunk)) / stride);
  return new (address) ZnFixedBlockChunk{nullptr, block, blocks};
}

void StartRun(ZnFixedBlockSizeClass *sizeClass, ZnFixedBlockChunk *chunk) {
  sizeClass->pNextUnused = reinterpret_cast<char *>(chunk + 1);
  sizeClass->udwUnusedCount = chunk->udwBlockCount;
}

ZnFixedBlockSizeClass *CreateSizeClass(ZnFixedBlockThreadHeap *heap, unsigned index) {
  auto *sizeClass = new ZnFixedBlockSizeClass;
  sizeClass->udwBlockSize = index * 4 + 4;
  sizeClass->udwStride = (sizeClass->udwBlockSize + sizeof(ZnFixedBlockHeader) + 15) & ~15u;
  ZnFixedBlockChunk *chunk = CreateChunk(sizeClass->udwStride);
  sizeClass->pFirstChunk = sizeClass->pLastChunk = chunk;
  StartRun(sizeClass, chunk);
  heap->apSizeClasses[index].store(sizeClass, std::memory_order_release);
  return sizeClass;
}

// Commits the next page of the last chunk, or links a new chunk when the
// reservation is used up. Blocks never straddle two runs.
void Grow(ZnFixedBlockSizeClass *sizeClass) {
  unsigned int got = 0;
  void *page = sizeClass->pLastChunk->pOwner->Alloc(static_cast<unsigned int>(ZnMemBlock::GetPageSize()), &got);
  if (page != nullptr) {
    sizeClass->pNextUnused = static_cast<char *>(page);
    sizeClass->udwUnusedCount = got / sizeClass->udwStride;
    return;
  }
  ZnFixedBlockChunk *chunk = CreateChunk(sizeClass->udwStride);
  sizeClass->pLastChunk->pNext = chunk;
  sizeClass->pLastChunk = chunk;
  StartRun(sizeClass, chunk);
}

// Puts the blocks that other threads freed, newest first, in front of the
// bound thread's own list: together they stay in the order of freeing, so
// the block freed last is still the next one handed out.
void TakeOverRemoteFrees(ZnFixedBlockSizeClass *sizeClass) {
  ZnFixedBlockHeader *first = sizeClass->pRemoteFreeHead.exchange(nullptr, std::memory_order_acquire);
  ZnFixedBlockHeader *last = first;
  while (last->pNext != nullptr) last = last->pNext;
  last->pNext = sizeClass->pFreeHead;
  sizeClass->pFreeHead = first;
}

// Run by the bound thread before each pop and push of its own list.
inline void CatchUpWithRemoteFrees(ZnFixedBlockSizeClass *sizeClass) {
  if (sizeClass->pRemoteFreeHead.load(std::memory_order_relaxed) != nullptr) TakeOverRemoteFrees(sizeClass);
}

ZnFixedBlockHeader *TakeBlock(ZnFixedBlockSizeClass *sizeClass) {
  CatchUpWithRemoteFrees(sizeClass);
  ZnFixedBlockHeader *block = sizeClass->pFreeHead;
  if (block != nullptr) {
    sizeClass->pFreeHead = block->pNext;
  } else {
    if (sizeClass->udwUnusedCount == 0) Grow(sizeClass);
    block = reinterpret_cast<ZnFixedBlockHeader *>(sizeClass->pNextUnused);
    sizeClass->pNextUnused += sizeClass->udwStride;
    --sizeClass->udwUnusedCount;
  }
  return block;
}

void PushOwnFree(ZnFixedBlockSizeClass *sizeClass, ZnFixedBlockHeader *block) {
  CatchUpWithRemoteFrees(sizeClass);
  block->pNext = sizeClass->pFreeHead;
  sizeClass->pFreeHead = block;
}

// No pop ever races with this push: the bound thread takes the whole list
// at once, so a block seen at the head cannot leave and come back (no ABA).
void PushRemoteFree(ZnFixedBlockSizeClass *sizeClass, ZnFixedBlockHeader *block) {
  ZnFixedBlockHeader *head = sizeClass->pRemoteFreeHead.load(std::memory_order_relaxed);
  do {
    block->pNext = head;
  } while (!sizeClass->pRemoteFreeHead.compare_exchange_weak(head, block, std::memory_order_release,
                                                             std::memory_order_relaxed));
}

// The link word right in front of a block handed out is not in use; under
// AddressSanitizer a read of it, the byte before the caller's memory, is
// reported.
void *HandOut(ZnFixedBlockHeader *block) {
  znutil::platform::Poison(&block->pNext, sizeof block->pNext);
  return block + 1;
}

ZnFixedBlockHeader *TakeBack(void *pointer) {
  ZnFixedBlockHeader *block = static_cast<ZnFixedBlockHeader *>(pointer) - 1;
  znutil::platform::Unpoison(&block->pNext, sizeof block->pNext);
  return block;
}

void *AllocLarge(unsigned long size) {
  if (size > static_cast<unsigned long>(-1) - sizeof(ZnFixedBlockHeader)) throw std::bad_alloc();
  auto *block = static_cast<ZnFixedBlockHeader *>(std::malloc(size + sizeof(ZnFixedBlockHeader)));
  if (block == nullptr) throw std::bad_alloc();
  block->ucStateTag = kTagLarge;
  return HandOut(block);
}

}  // namespace

ZnFixedBlockAllocator::ZnFixedBlockAllocator() {
  if (tlsHeap == nullptr) BindHeap(false);
}

void *ZnFixedBlockAllocator::Alloc(unsigned long size) {
  ZnFixedBlockThreadHeap *heap = CurrentHeap();
  if (size >= kLargeSize) return AllocLarge(size);
  unsigned const index = static_cast<unsigned>(size >> 2);
  ZnFixedBlockSizeClass *sizeClass = heap->apSizeClasses[index].load(std::memory_order_relaxed);
  if (sizeClass == nullptr) sizeClass = CreateSizeClass(heap, index);
  ZnFixedBlockHeader *block = TakeBlock(sizeClass);
  block->ucStateTag = kTagInUse;
  block->ucHeapIndex = heap->ucHeapIndex;
  block->uwSizeClassIndex = static_cast<std::uint16_t>(index);
  block->pNext = nullptr;
  return HandOut(block);
}

void ZnFixedBlockAllocator::Free(void *pointer) {
  ZnFixedBlockThreadHeap *heap = CurrentHeap();
  if (pointer == nullptr) return;
  ZnFixedBlockHeader *block = TakeBack(pointer);
  if (block->ucStateTag & kLargeBit) {
    std::free(block);
    return;
  }
  bool const own = block->ucHeapIndex == heap->ucHeapIndex;
  ZnFixedBlockThreadHeap *owner = own ? heap : heapTable[block->ucHeapIndex].load(std::memory_order_acquire);
  ZnFixedBlockSizeClass *sizeClass =
      owner != nullptr ? owner->apSizeClasses[block->uwSizeClassIndex].load(std::memory_order_acquire) : nullptr;
  // Only a block of an unregistered heap can find no size class under the
  // index it claims; it is left unused rather than put on a wrong list.
  if (sizeClass == nullptr) return;
  block->ucStateTag = kTagFree;
  if (own) {
    PushOwnFree(sizeClass, block);
  } else {
    PushRemoteFree(sizeClass, block);
  }
}

void ZnFixedBlockAllocator::Shutdown() {
  ZnFixedBlockThreadHeap *heap = tlsHeap;
  if (heap == nullptr) return;
  tlsHeap = nullptr;
  heap->udwOrphaned.store(1, std::memory_order_release);
}
