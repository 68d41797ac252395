// Several threads allocate blocks and hand them to the others, which free
// them while their owner keeps allocating. A tag in each live block catches
// a block handed out twice; at the end every owner must get back exactly the
// blocks it ever had, so a lost or doubled free shows as well.
#include <znutil/memory/ZnFixedBlockAllocator.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "../system/Eventually.h"

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 1000;
constexpr int kBatch = 3 * (kThreads - 1);  // each round, every other thread gets 3 blocks
constexpr unsigned long kSizes[] = {16, 64, 256};
constexpr int kSizeCount = 3;
constexpr std::uint64_t kLiveMark = 0x11FEull << 48;
constexpr std::uint64_t kDeadMark = 0xDEADull << 48;

std::uint64_t ReadTag(void *block) {
  std::uint64_t tag;
  std::memcpy(&tag, block, sizeof tag);
  return tag;
}

void WriteTag(void *block, std::uint64_t tag) { std::memcpy(block, &tag, sizeof tag); }

struct Mailbox {
  std::mutex mutex;
  std::vector<std::pair<void *, std::uint64_t>> blocks;
};

struct Stress {
  Mailbox mailboxes[kThreads];
  std::atomic<int> doneFreeing{0};
  std::atomic<int> handedOutLive{0};
  std::atomic<int> wrongTag{0};
  std::atomic<int> notAllBack{0};
  std::atomic<int> stuck{0};

  void Send(int to, void *block, std::uint64_t tag) {
    std::lock_guard<std::mutex> hold(mailboxes[to].mutex);
    mailboxes[to].blocks.emplace_back(block, tag);
  }

  int FreeReceived(int self) {
    std::vector<std::pair<void *, std::uint64_t>> blocks;
    {
      std::lock_guard<std::mutex> hold(mailboxes[self].mutex);
      blocks.swap(mailboxes[self].blocks);
    }
    for (auto const &[block, tag] : blocks) {
      if (ReadTag(block) != tag) ++wrongTag;
      WriteTag(block, kDeadMark);
      ZnFixedBlockAllocator::Free(block);
    }
    return static_cast<int>(blocks.size());
  }

  void Run(int self) {
    std::set<void *> seen[kSizeCount];
    std::uint64_t serial = 0;
    int received = 0;
    for (int round = 0; round < kRounds; ++round) {
      for (int k = 0; k < kBatch; ++k) {
        void *block = ZnFixedBlockAllocator::Alloc(kSizes[k % kSizeCount]);
        if ((ReadTag(block) & kLiveMark) == kLiveMark) ++handedOutLive;
        std::uint64_t const tag = kLiveMark | static_cast<std::uint64_t>(self) << 32 | ++serial;
        WriteTag(block, tag);
        seen[k % kSizeCount].insert(block);
        Send((self + 1 + k % (kThreads - 1)) % kThreads, block, tag);
      }
      received += FreeReceived(self);
    }
    if (!znutil_test::Eventually([&] { return (received += FreeReceived(self)) == kRounds * kBatch; })) ++stuck;
    ++doneFreeing;
    if (!znutil_test::Eventually([&] { return doneFreeing.load() == kThreads; })) ++stuck;
    // Every block freed anywhere is back on this heap's lists: as many
    // allocations as it ever had blocks give exactly those blocks again.
    for (int s = 0; s < kSizeCount; ++s) {
      std::set<void *> again;
      for (std::size_t i = 0; i < seen[s].size(); ++i) again.insert(ZnFixedBlockAllocator::Alloc(kSizes[s]));
      if (again != seen[s]) ++notAllBack;
      for (void *block : again) ZnFixedBlockAllocator::Free(block);
    }
    ZnFixedBlockAllocator::Shutdown();
  }
};

TEST(CrossThreadFreeStressTest, EveryBlockFreedOnAnotherThreadComesBackOnce) {
  Stress stress;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) threads.emplace_back([&stress, t] { stress.Run(t); });
  for (auto &thread : threads) thread.join();
  EXPECT_EQ(stress.stuck.load(), 0);
  EXPECT_EQ(stress.handedOutLive.load(), 0);
  EXPECT_EQ(stress.wrongTag.load(), 0);
  EXPECT_EQ(stress.notAllBack.load(), 0);
}

}  // namespace
