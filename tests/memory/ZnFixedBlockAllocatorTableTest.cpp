#include <znutil/memory/ZnFixedBlockAllocator.h>

#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "BlockHeader.h"

namespace {

using znutil_test::HeapIndex;

TEST(ZnFixedBlockAllocatorTableTest, HeapsBeyondTheTableStayUnregisteredAndClaimIndexZero) {
  constexpr unsigned kThreads = ZnFixedBlockAllocator::kHeapTableSize + 4;
  std::vector<void *> blocks(kThreads);
  // Threads that end without Shutdown keep their heaps, so every one of
  // them takes a new slot until the table is full.
  for (unsigned t = 0; t < kThreads; ++t) std::thread([&, t] { blocks[t] = ZnFixedBlockAllocator::Alloc(24); }).join();
  std::set<unsigned> registered;
  for (unsigned t = 0; t < ZnFixedBlockAllocator::kHeapTableSize; ++t) registered.insert(HeapIndex(blocks[t]));
  EXPECT_EQ(registered.size(), ZnFixedBlockAllocator::kHeapTableSize);
  for (unsigned t = ZnFixedBlockAllocator::kHeapTableSize; t < kThreads; ++t) EXPECT_EQ(HeapIndex(blocks[t]), 0u);

  // Freeing blocks of unregistered heaps anywhere must be safe.
  for (void *block : blocks) ZnFixedBlockAllocator::Free(block);
  std::thread([&] {
    ZnFixedBlockAllocator fresh;  // unregistered too: the table is full
    void *block = ZnFixedBlockAllocator::Alloc(500);
    EXPECT_EQ(HeapIndex(block), 0u);
    ZnFixedBlockAllocator::Free(block);
    EXPECT_EQ(ZnFixedBlockAllocator::Alloc(500), block);
    ZnFixedBlockAllocator::Shutdown();
  }).join();
}

}  // namespace
