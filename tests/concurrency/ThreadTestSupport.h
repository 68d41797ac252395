// Helpers for the thread and event tests: waiting for a thread without
// sleeping, whether a thread sleeps in the kernel, work that runs a
// function or holds its thread, and threads the library did not start.
#ifndef ZNUTIL_TESTS_CONCURRENCY_THREADTESTSUPPORT_H
#define ZNUTIL_TESTS_CONCURRENCY_THREADTESTSUPPORT_H

#include <atomic>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <sys/syscall.h>
#include <unistd.h>

#include <znutil/concurrency/ZnEvent.h>
#include <znutil/concurrency/ZnThread.h>
#include <znutil/concurrency/ZnThreadWork.h>
#include <znutil/memory/ZnFixedBlockAllocator.h>

#include "../system/Eventually.h"

namespace znutil_test {

// Long enough for any wait that should succeed, short enough that a
// broken test fails instead of hanging.
constexpr unsigned long kGenerous = 20000;

// The calling thread's kernel id.
inline long ThreadId() { return syscall(SYS_gettid); }

// Whether the thread `id` of this process sleeps in the kernel ("S").
inline bool Asleep(long id) {
  std::ifstream stat("/proc/self/task/" + std::to_string(id) + "/stat");
  std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
  std::size_t const end = text.rfind(')');  // the name may hold spaces
  return end != std::string::npos && text.compare(end, 4, ") S ") == 0;
}

// Runs `job` on `count` threads at once and joins them.
template <class Job>
void Concurrently(int count, Job job) {
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i) threads.emplace_back(job);
  for (std::thread &thread : threads) thread.join();
}

// Two threads each run `guarded` 20000 times on one plain counter, which
// only the guard protects; yields the count.
template <class Guarded>
long CountOnTwoThreads(Guarded guarded) {
  long counter = 0;
  Concurrently(2, [&] {
    for (int i = 0; i < 20000; ++i) guarded([&] { ++counter; });
  });
  return counter;
}

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
  return Eventually([&] { return worker.AssignWork(&work, 0); }) && work.done.Wait(kGenerous) == 0;
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
  ZnEvent started{true}, release{true};
  std::atomic<int> runs{0};
};

// Work that counts its turns until told to stop. Unless `busy`, each turn
// ends in a call that can be interrupted.
class SpinWork : public ZnThreadWork {
 public:
  explicit SpinWork(bool busy = false) : busy_(busy) {}
  void Work() override {
    ZnEvent never(true);
    while (!stop.load()) {
      progress.fetch_add(1);
      if (!busy_) never.Wait(1);
    }
  }
  std::atomic<long> progress{0};
  std::atomic<bool> stop{false};

 private:
  bool const busy_;
};

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_CONCURRENCY_THREADTESTSUPPORT_H
