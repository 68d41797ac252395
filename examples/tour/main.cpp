// A tour of the znutil library: each section shows one subsystem at work
// and prints what it did.
#include <cstdio>
#include <sstream>

#include <znutil/znutil.h>

namespace {

void TourMemory() {
  std::printf("== Memory\n");
  void *small = ZnFixedBlockAllocator::Alloc(24);
  void *large = ZnFixedBlockAllocator::Alloc(4096);
  std::printf("allocated a 24-byte block at %p and a 4096-byte block at %p\n", small, large);
  ZnFixedBlockAllocator::Free(small);
  void *again = ZnFixedBlockAllocator::Alloc(24);
  std::printf("freed the small block; the next 24-byte request %s it\n", again == small ? "reuses" : "does not reuse");
  ZnFixedBlockAllocator::Free(again);
  ZnFixedBlockAllocator::Free(large);
}

void TourLocks() {
  std::printf("== Locks\n");
  ZnLock lock;
  bool const first = lock.Lock(0);
  bool const second = lock.Lock(25);
  std::printf("first Lock(0): %s; second Lock(25) on the held lock: %s\n", first ? "taken" : "refused",
              second ? "taken" : "refused");
  lock.Unlock();
  ZnAtomicWord word;
  word.Increment();
  std::printf("an atomic word incremented once holds %ld\n", word.Get());
}

void TourStrings() {
  std::printf("== Strings\n");
  ZnString name("report");
  ZnString copy = name;
  copy << ".txt";
  std::printf("\"%s\" copied and appended to: \"%s\" (the original is unchanged)\n",
              static_cast<char const *>(name), static_cast<char const *>(copy));
  ZnString greeting("world");
  greeting >> "hello, ";
  std::printf("prepending with >>: \"%s\"; as upper case: \"%s\"\n", static_cast<char const *>(greeting),
              static_cast<char const *>(greeting.ToUpper()));
  std::printf("\"lo\" found at %d; empty text equals NULL_STRING: %s\n", greeting.ContainsSubString(ZnString("lo")),
              ZnString("") == NULL_STRING ? "yes" : "no");
}

void TourClocks() {
  std::printf("== Clocks\n");
  ZnStopWatch watch;
  watch.Start(20);
  ZnSleeper::Snooze(ZnTime(0, 25));
  std::printf("a stopwatch with a 20 ms period, after a 25 ms snooze: %lu ms elapsed, %s\n",
              static_cast<unsigned long>(watch.MeasureElapsed()), watch.HasExpired() ? "expired" : "not expired");
  std::printf("tick 5 minus tick 0xFFFFFFFF across the wrap: %lu (one short of the true 6, by design)\n",
              static_cast<unsigned long>(ZnSubtractTickCounts(5, 0xFFFFFFFF)));
  std::ostringstream spans;
  spans << ZnTime(1, 900) + ZnTime(0, 200) << ", and 1.000 - 2.000 = " << ZnTime(1, 0) - ZnTime(2, 0);
  std::printf("1.900 + 0.200 = %s\n", spans.str().c_str());
}

// Work that adds up a range of numbers on whatever thread runs it.
class SumWork : public ZnThreadWork {
 public:
  void Work() override {
    for (long i = 1; i <= 1000; ++i) sum += i;
    ranOn = ZnThread::GetThread();
    done.Signal();
  }
  long sum = 0;
  ZnThread *ranOn = nullptr;
  ZnEvent done{false};
};

void TourThreads() {
  std::printf("== Threads\n");
  ZnThread *worker = new ZnThread(ZnThread::kSelfDeleting);
  SumWork work;
  bool const taken = worker->AssignWork(&work, 0);
  work.done.Wait(INFINITE);
  std::printf("work %s by a library thread; 1 + ... + 1000 = %ld, run on %s\n", taken ? "taken" : "refused", work.sum,
              work.ranOn == worker ? "the worker" : "another thread");
  std::printf("the calling thread is %s library thread\n", ZnThread::GetThread() == nullptr ? "no" : "a");
  worker->SignalShutdown(true);
  std::printf("the worker shut down and deleted itself\n");
}

}  // namespace

int main() {
  TourMemory();
  TourLocks();
  TourStrings();
  TourClocks();
  TourThreads();
  return 0;
}
