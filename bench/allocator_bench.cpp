// ZnFixedBlockAllocator against glibc malloc/free: single-thread churn and
// a two-thread pattern in which one thread allocates and the other frees.
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <random>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include <znutil/memory/ZnFixedBlockAllocator.h>

namespace {

struct Fixed {
  static void *Alloc(std::size_t size) { return ZnFixedBlockAllocator::Alloc(size); }
  static void Free(void *block) { ZnFixedBlockAllocator::Free(block); }
};

struct Malloc {
  static void *Alloc(std::size_t size) { return std::malloc(size); }
  static void Free(void *block) { std::free(block); }
};

constexpr int kLive = 1000;

// Allocates 1,000 live blocks, then frees them in a random order.
template <typename Heap>
void BM_Churn(benchmark::State &state) {
  std::size_t const size = static_cast<std::size_t>(state.range(0));
  std::vector<int> order(kLive);
  for (int i = 0; i < kLive; ++i) order[i] = i;
  std::shuffle(order.begin(), order.end(), std::mt19937(42));
  std::vector<void *> blocks(kLive);
  for (auto _ : state) {
    for (int i = 0; i < kLive; ++i) blocks[i] = Heap::Alloc(size);
    benchmark::ClobberMemory();
    for (int i : order) Heap::Free(blocks[i]);
  }
  state.SetItemsProcessed(state.iterations() * kLive);
}

// A single-producer, single-consumer ring of block batches.
class BatchRing {
 public:
  bool Push(void **batch) {
    std::size_t const head = head_.load(std::memory_order_relaxed);
    if (head - tail_.load(std::memory_order_acquire) == kSlots) return false;
    slots_[head % kSlots] = batch;
    head_.store(head + 1, std::memory_order_release);
    return true;
  }
  void **Pop() {
    std::size_t const tail = tail_.load(std::memory_order_relaxed);
    if (tail == head_.load(std::memory_order_acquire)) return nullptr;
    void **batch = slots_[tail % kSlots];
    tail_.store(tail + 1, std::memory_order_release);
    return batch;
  }
  bool Empty() const { return tail_.load(std::memory_order_acquire) == head_.load(std::memory_order_acquire); }

 private:
  static constexpr std::size_t kSlots = 64;
  void **slots_[kSlots];
  std::atomic<std::size_t> head_{0};
  std::atomic<std::size_t> tail_{0};
};

// The calling thread allocates batches of 1,000 blocks; a second thread frees them.
template <typename Heap>
void BM_ProducerConsumer(benchmark::State &state) {
  std::size_t const size = static_cast<std::size_t>(state.range(0));
  constexpr int kBatches = 64;
  std::vector<std::vector<void *>> batches(kBatches, std::vector<void *>(kLive));
  BatchRing full, empty;
  for (auto &batch : batches) empty.Push(batch.data());
  std::atomic<bool> done{false};
  std::thread consumer([&] {
    for (;;) {
      void **batch = full.Pop();
      if (batch == nullptr) {
        if (done.load(std::memory_order_acquire) && full.Empty()) break;
        std::this_thread::yield();
        continue;
      }
      for (int i = 0; i < kLive; ++i) Heap::Free(batch[i]);
      while (!empty.Push(batch)) std::this_thread::yield();
    }
    ZnFixedBlockAllocator::Shutdown();
  });
  for (auto _ : state) {
    void **batch;
    while ((batch = empty.Pop()) == nullptr) std::this_thread::yield();
    for (int i = 0; i < kLive; ++i) batch[i] = Heap::Alloc(size);
    while (!full.Push(batch)) std::this_thread::yield();
  }
  done.store(true, std::memory_order_release);
  consumer.join();
  state.SetItemsProcessed(state.iterations() * kLive);
}

BENCHMARK_TEMPLATE(BM_Churn, Fixed)->Arg(16)->Arg(64)->Arg(256);
BENCHMARK_TEMPLATE(BM_Churn, Malloc)->Arg(16)->Arg(64)->Arg(256);
BENCHMARK_TEMPLATE(BM_ProducerConsumer, Fixed)->Arg(16)->Arg(64)->Arg(256)->UseRealTime();
BENCHMARK_TEMPLATE(BM_ProducerConsumer, Malloc)->Arg(16)->Arg(64)->Arg(256)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
