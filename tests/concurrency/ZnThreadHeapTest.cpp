// The hand-over of allocator heaps from threads that end to threads that start.
#include <znutil/concurrency/ZnThread.h>

#include <set>

#include <gtest/gtest.h>

#include "../memory/BlockHeader.h"
#include "ThreadTestSupport.h"

namespace {

using znutil_test::HeapIndex;

// Starts a thread, lets it allocate `size` bytes, and ends it. Yields the
// heap index of the block; the block itself goes to `*block` or is freed.
unsigned RunAndEnd(int flags, unsigned long size, void **block = nullptr) {
  auto *thread = new ZnThread(flags);
  unsigned index = 0;
  EXPECT_TRUE(znutil_test::RunOn(*thread, [&] {
    void *allocated = ZnFixedBlockAllocator::Alloc(size);
    index = HeapIndex(allocated);
    if (block == nullptr) ZnFixedBlockAllocator::Free(allocated);
    else *block = allocated;
  }));
  thread->SignalShutdown(true);
  if (!(flags & ZnThread::kSelfDeleting)) delete thread;
  return index;
}

// A size that nothing but these tests asks for: a thread's own start takes
// blocks of smaller sizes from its heap.
constexpr unsigned long kRareSize = 1000;

TEST(ZnThreadHeapTest, HeapGivenBackAtThreadEndIsAdoptedByTheNextThread) {
  void *first = nullptr, *again = nullptr;
  unsigned const firstIndex = RunAndEnd(0, kRareSize, &first);
  ZnFixedBlockAllocator::Free(first);  // onto the orphaned heap's list
  EXPECT_EQ(RunAndEnd(ZnThread::kSelfDeleting, kRareSize, &again), firstIndex);
  EXPECT_EQ(again, first);  // the free list came with the heap
  ZnFixedBlockAllocator::Free(again);
}

TEST(ZnThreadHeapTest, ThousandThreadsInTurnReuseOneHeap) {
  std::set<unsigned> indexes;
  for (int i = 0; i < 1000; ++i) indexes.insert(RunAndEnd(i % 2 == 0 ? 0 : ZnThread::kSelfDeleting, 24 + i % 200));
  EXPECT_EQ(indexes.size(), 1u) << "heaps were not given back";
}

}  // namespace
