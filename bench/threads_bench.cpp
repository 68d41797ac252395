// The round trip of one piece of work: hand it to a worker that waits for
// work, and wait until the worker says it is done. ZnThread::AssignWork
// with a ZnEvent back, against std::thread with std::condition_variable
// both ways.
#include <condition_variable>
#include <mutex>
#include <thread>

#include <benchmark/benchmark.h>

#include <znutil/concurrency/ZnEvent.h>
#include <znutil/concurrency/ZnThread.h>
#include <znutil/concurrency/ZnThreadWork.h>

namespace {

class Ping : public ZnThreadWork {
 public:
  void Work() override { done.Signal(); }
  ZnEvent done{false};
};

void BM_ZnThreadRoundTrip(benchmark::State &state) {
  ZnThread worker(0);
  Ping ping;
  for (auto _ : state) {
    // Refused while the worker is still on its way back from the last
    // one, which it may need this processor to finish.
    while (!worker.AssignWork(&ping, 0)) std::this_thread::yield();
    ping.done.Wait(INFINITE);
  }
  worker.SignalShutdown(true);
}
BENCHMARK(BM_ZnThreadRoundTrip)->UseRealTime();

// A worker that sleeps on one condition variable until it is given work,
// and reports it done on another.
class StdWorker {
 public:
  StdWorker() : thread_([this] { Run(); }) {}
  ~StdWorker() {
    {
      std::lock_guard<std::mutex> lock(workLock_);
      quit_ = true;
    }
    workReady_.notify_one();
    thread_.join();
  }

  void RoundTrip() {
    {
      std::lock_guard<std::mutex> lock(workLock_);
      hasWork_ = true;
    }
    workReady_.notify_one();
    std::unique_lock<std::mutex> lock(doneLock_);
    doneReady_.wait(lock, [this] { return done_; });
    done_ = false;
  }

 private:
  void Run() {
    std::unique_lock<std::mutex> lock(workLock_);
    for (;;) {
      workReady_.wait(lock, [this] { return hasWork_ || quit_; });
      if (quit_) return;
      hasWork_ = false;
      {
        std::lock_guard<std::mutex> doneLock(doneLock_);
        done_ = true;
      }
      doneReady_.notify_one();
    }
  }

  std::mutex workLock_;
  std::condition_variable workReady_;
  bool hasWork_ = false;
  bool quit_ = false;
  std::mutex doneLock_;
  std::condition_variable doneReady_;
  bool done_ = false;
  std::thread thread_;
};

void BM_StdThreadRoundTrip(benchmark::State &state) {
  StdWorker worker;
  for (auto _ : state) worker.RoundTrip();
}
BENCHMARK(BM_StdThreadRoundTrip)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
