#include <znutil/memory/ZnFixedBlockAllocator.h>

#include <cstdint>
#include <cstring>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#endif

#include "BlockHeader.h"

namespace {

using znutil_test::HeapIndex;
using znutil_test::SizeClassIndex;
using znutil_test::StateTag;

// Runs `body` on a new thread that gives its heap back when it ends, as
// library threads do.
template <typename Body>
void OnThread(Body body) {
  std::thread thread([&] {
    body();
    ZnFixedBlockAllocator::Shutdown();
  });
  thread.join();
}

std::uintptr_t Address(void *p) { return reinterpret_cast<std::uintptr_t>(p); }

TEST(ZnFixedBlockAllocatorTest, SizeClassesFollowTheFourByteRule) {
  struct Case {
    unsigned long size;
    unsigned index;
  } const cases[] = {{0, 0}, {3, 0}, {4, 1}, {7, 1}, {100, 25}, {1020, 255}, {1023, 255}};
  for (auto const &c : cases) {
    void *block = ZnFixedBlockAllocator::Alloc(c.size);
    EXPECT_EQ(StateTag(block), 5) << c.size;
    EXPECT_EQ(SizeClassIndex(block), c.index) << c.size;
    EXPECT_EQ(Address(block) % 16, 0u) << c.size;
    std::memset(block, 0xAB, c.index * 4 + 4);  // the whole block size is usable
    ZnFixedBlockAllocator::Free(block);
    EXPECT_EQ(StateTag(block), 8) << "a freed block is tagged free";
  }
}

TEST(ZnFixedBlockAllocatorTest, LargeRequestsComeFromTheHeap) {
  void *block = ZnFixedBlockAllocator::Alloc(1024);
  EXPECT_EQ(StateTag(block), 6);
  EXPECT_EQ(Address(block) % 16, 0u);
  std::memset(block, 0, 1024);
  ZnFixedBlockAllocator::Free(block);
  ZnFixedBlockAllocator::Free(nullptr);
}

#if defined(__SANITIZE_ADDRESS__)
// A read just before a block (of a string's buffer, say) is an error that
// the sanitizer reports; the block itself and its header's fields are not.
TEST(ZnFixedBlockAllocatorTest, TheWordBeforeABlockIsPoisonedWhileInUse) {
  for (unsigned long const size : {8ul, 5000ul}) {
    auto *block = static_cast<char *>(ZnFixedBlockAllocator::Alloc(size));
    EXPECT_TRUE(__asan_address_is_poisoned(block - 1)) << size;
    EXPECT_TRUE(__asan_address_is_poisoned(block - 8)) << size;
    EXPECT_FALSE(__asan_address_is_poisoned(block - 9)) << size;
    EXPECT_FALSE(__asan_address_is_poisoned(block)) << size;
    ZnFixedBlockAllocator::Free(block);
  }
}
#endif

TEST(ZnFixedBlockAllocatorTest, LastFreedIsNextAllocated) {
  void *a = ZnFixedBlockAllocator::Alloc(40);
  void *b = ZnFixedBlockAllocator::Alloc(40);
  ZnFixedBlockAllocator::Free(a);
  ZnFixedBlockAllocator::Free(b);
  EXPECT_EQ(ZnFixedBlockAllocator::Alloc(40), b);
  EXPECT_EQ(ZnFixedBlockAllocator::Alloc(40), a);
  ZnFixedBlockAllocator::Free(a);
  ZnFixedBlockAllocator::Free(b);
}

TEST(ZnFixedBlockAllocatorTest, BlockFreedOnAnotherThreadIsServedAgainToItsOwner) {
  void *mine = ZnFixedBlockAllocator::Alloc(56);
  std::uint8_t const owner = HeapIndex(mine);
  std::uint8_t freerHeap = owner;
  OnThread([&] {
    void *own = ZnFixedBlockAllocator::Alloc(8);
    freerHeap = HeapIndex(own);
    ZnFixedBlockAllocator::Free(own);
    ZnFixedBlockAllocator::Free(mine);
  });
  EXPECT_NE(freerHeap, owner);
  EXPECT_EQ(ZnFixedBlockAllocator::Alloc(56), mine);
  ZnFixedBlockAllocator::Free(mine);
}

TEST(ZnFixedBlockAllocatorTest, HeapGivenBackByShutdownIsAdoptedWhole) {
  std::uint8_t firstIndex = 0, secondIndex = 1;
  void *freedBeforeExit = nullptr;
  void *keptLive = nullptr;
  OnThread([&] {
    keptLive = ZnFixedBlockAllocator::Alloc(200);
    freedBeforeExit = ZnFixedBlockAllocator::Alloc(200);
    firstIndex = HeapIndex(freedBeforeExit);
    ZnFixedBlockAllocator::Free(freedBeforeExit);
  });
  OnThread([&] {
    void *block = ZnFixedBlockAllocator::Alloc(200);
    secondIndex = HeapIndex(block);
    EXPECT_EQ(block, freedBeforeExit) << "the free list comes with the heap";
    ZnFixedBlockAllocator::Free(keptLive);  // a live block of the old thread stays valid
    EXPECT_EQ(ZnFixedBlockAllocator::Alloc(200), keptLive);
    ZnFixedBlockAllocator::Free(keptLive);
    ZnFixedBlockAllocator::Free(block);
  });
  EXPECT_EQ(secondIndex, firstIndex);
}

TEST(ZnFixedBlockAllocatorTest, ChunksAreCarvedPageByPageThenChained) {
  OnThread([] {
    ZnFixedBlockAllocator fresh;  // a new heap, so class 255 starts empty
    std::size_t const page = 4096;
    std::size_t const stride = 1040;  // 1024 bytes and the header, rounded to 16
    std::vector<void *> blocks;
    for (int i = 0; i < 3 * 256 + 1; ++i) blocks.push_back(ZnFixedBlockAllocator::Alloc(1023));
    std::uintptr_t const chunk = Address(blocks[0]) - 48;  // 32-byte chunk header, 16-byte block header
    EXPECT_EQ(chunk % page, 0u);
    EXPECT_EQ(Address(blocks[1]), Address(blocks[0]) + stride);
    EXPECT_EQ(Address(blocks[2]), Address(blocks[0]) + 2 * stride);
    EXPECT_EQ(Address(blocks[3]), chunk + page + 16) << "three blocks a page; no block straddles two";
    EXPECT_EQ(Address(blocks[767]), chunk + 255 * page + 2 * stride + 16);
    std::uintptr_t const second = Address(blocks[768]) - 48;
    EXPECT_EQ(second % page, 0u);
    EXPECT_TRUE(second < chunk || second >= chunk + 256 * page) << "a new chunk once 256 pages are used";
    for (void *block : blocks) ZnFixedBlockAllocator::Free(block);
  });
}

TEST(ZnFixedBlockAllocatorTest, ManyThreadsAllocateAndFreeEachOthersBlocks) {
  constexpr int kThreads = 4;
  constexpr int kBlocks = 2000;
  std::vector<std::vector<void *>> made(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t)
    threads.emplace_back([&, t] {
      for (int i = 0; i < kBlocks; ++i) {
        auto *block = static_cast<int *>(ZnFixedBlockAllocator::Alloc(static_cast<unsigned long>(4 + i % 300)));
        *block = t;
        made[t].push_back(block);
      }
    });
  for (auto &thread : threads) thread.join();
  threads.clear();
  for (int t = 0; t < kThreads; ++t)
    threads.emplace_back([&, t] {
      for (void *block : made[(t + 1) % kThreads]) {
        EXPECT_EQ(*static_cast<int *>(block), (t + 1) % kThreads);
        ZnFixedBlockAllocator::Free(block);
      }
      ZnFixedBlockAllocator::Shutdown();
    });
  for (auto &thread : threads) thread.join();
}

}  // namespace
