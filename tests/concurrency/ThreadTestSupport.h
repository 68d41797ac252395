// Helpers for the thread tests: work that runs a function, work that holds
// its thread until released, and waiting for a worker without sleeping.
#ifndef ZNUTIL_TESTS_CONCURRENCY_THREADTESTSUPPORT_H
#define ZNUTIL_TESTS_CONCURRENCY_THREADTESTSUPPORT_H

#include <atomic>
#include <functional>
#include <thread>
#include <utility>

#include <znutil/concurrency/ZnEvent.h>
#include <znutil/concurrency/ZnThread.h>
#include <znutil/concurrency/ZnThreadWork.h>
#include <znutil/memory/ZnFixedBlockAllocator.h>

#include "EventTestSupport.h"

namespace znutil_test {

// Long enough for any wait that should succeed, short enough that a
// broken test fails instead of hanging.
constexpr unsigned long kGenerous = 20000;

// The low byte of a thread's state.
inline unsigned LowState(ZnThread const &thread) { return thread.GetState() & 0xFFu; }

// Runs a function and then signals `done`.
class FunctionWork : public ZnThreadWork {
 public:
  explicit FunctionWork(std::function<void()> job) : job_(std::move(job)) {}
  void Work() override {
    job_();
    done.Signal();
  }
  ZnEvent done{true};

 private:
  std::function<void()> job_;
};

// Runs `job` on `worker` and waits until it has run; false if the worker
// never took it or never finished it.
inline bool RunOn(ZnThread &worker, std::function<void()> job) {
  FunctionWork work(std::move(job));
  if (!Eventually([&] { return worker.AssignWork(&work, 0); })) return false;
  return work.done.Wait(kGenerous) == 0;
}

// Runs `job` on a thread the library did not start. The thread then drops
// its data and gives its allocator heap back, as the library's own threads
// do at their end, so that repeated runs do not pile up heaps.
template <class Job>
void OnForeignThread(Job job) {
  std::thread([&job] {
    job();
    ZnThread::DestroyThreadData();
    ZnFixedBlockAllocator::Shutdown();
  }).join();
}

// Work that says when it has started and then runs until released.
class GatedWork : public ZnThreadWork {
 public:
  void Work() override {
    started.Signal();
    release.Wait(INFINITE);
    runs.fetch_add(1);
  }
  ZnEvent started{true};
  ZnEvent release{true};
  std::atomic<int> runs{0};
};

// Work that counts its turns, each of which ends in a call that can be
// interrupted, until told to stop.
class SpinWork : public ZnThreadWork {
 public:
  void Work() override {
    ZnEvent never(true);
    while (!stop.load()) {
      progress.fetch_add(1);
      never.Wait(1);
    }
  }
  std::atomic<long> progress{0};
  std::atomic<bool> stop{false};
};

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_CONCURRENCY_THREADTESTSUPPORT_H
