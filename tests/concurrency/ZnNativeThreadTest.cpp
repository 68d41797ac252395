#include <znutil/concurrency/ZnNativeThread.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <memory>
#include <random>
#include <sys/resource.h>

#include <gtest/gtest.h>

#include <znutil/concurrency/ZnCriticalSection.h>
#include <znutil/concurrency/ZnNativeThreadWaitObject.h>
#include <znutil/concurrency/ZnSleeper.h>
#include <znutil/platform/Thread.h>

#include "ThreadTestSupport.h"

namespace {

using namespace znutil_test;
using znutil::platform::GetThreadMessage;
using znutil::platform::ThreadMessage;
using znutil::platform::WaitResult;

bool Marked(ZnThread const &thread) { return (thread.GetState() & ZnThread::kStateSuspended) != 0; }

// True if `progress` stays where it is while the caller yields a while.
bool Frozen(std::atomic<long> const &progress) {
  long const before = progress.load();
  for (int i = 0; i < 2000; ++i) std::this_thread::yield();
  return progress.load() == before;
}

// True once `progress` moves on from where it is now.
bool Moves(std::atomic<long> const &progress) {
  long const from = progress.load();
  return Eventually([&] { return progress.load() > from; });
}

int NiceOf(ZnThread const &thread) {
  errno = 0;
  return getpriority(PRIO_PROCESS, static_cast<id_t>(thread.GetId()));
}

// Busy or not, a suspended thread is held in a kernel wait, not spinning a
// core away.
TEST(ZnNativeThreadTest, SuspendCountsOnARunningThreadSetTheMarkOnlyFromTheSecond) {
  for (bool busy : {false, true}) {
    SCOPED_TRACE(busy ? "busy" : "pausing");
    ZnThread thread(0);
    SpinWork work(busy);
    ASSERT_TRUE(thread.AssignWork(&work, 0));
    ASSERT_TRUE(Moves(work.progress));
    thread.Suspend();  // previous count 0: the mark stays clear, deliberately
    EXPECT_FALSE(Marked(thread));
    EXPECT_TRUE(Eventually([&] { return Asleep(thread.GetId()); }));
    EXPECT_TRUE(Frozen(work.progress));
    thread.Suspend();  // previous count 1
    EXPECT_TRUE(Marked(thread));
    thread.Resume();  // previous count 2
    EXPECT_TRUE(Frozen(work.progress));
    thread.Resume();  // previous count 1: it runs, and the mark stays
    EXPECT_TRUE(Marked(thread));
    ASSERT_TRUE(Moves(work.progress));
    thread.Resume();  // previous count 0: only now the mark goes
    EXPECT_FALSE(Marked(thread));

    work.stop.store(true);
    thread.SignalShutdown(true);
    thread.Suspend();  // fails on an ended thread: all ones sets the mark
    EXPECT_EQ(thread.GetState(), ZnThread::kStateEnded | ZnThread::kStateSuspended);
  }
}

// Suspends and resumes from several threads at once lose no count, and a
// thread suspended twice is still reached by Terminate.
TEST(ZnNativeThreadTest, SuspendAndResumeRaceWithoutLosingACountAndTerminateReachesASuspendedThread) {
  ZnThread thread(0);
  SpinWork work;
  ASSERT_TRUE(thread.AssignWork(&work, 0));
  Concurrently(3, [&] {
    for (int i = 0; i < 200; ++i) {
      thread.Suspend();
      thread.Resume();
    }
  });
  ASSERT_TRUE(Moves(work.progress));  // not left parked
  thread.Suspend();
  thread.Suspend();
  thread.Terminate(0);
  ASSERT_TRUE(thread.WaitForThreadToExit(kGenerous));
  thread.Resume();  // the thread is gone: nothing to resume
  EXPECT_TRUE(Marked(thread));
}

TEST(ZnNativeThreadTest, TerminateEndsAThreadWithoutItsEndOfThreadWork) {
  struct Phases : ZnThreadNotify {
    void Notify(int phase, ZnThread *) override { seen.fetch_or(1 << phase); }
    std::atomic<int> seen{0};
  } idlePhases, neverPhases;
  ZnThread idle(ZnThread::kStartSuspended), never(ZnThread::kStartSuspended);
  idle.SetNotification(&idlePhases);
  idle.Resume();
  ASSERT_TRUE(Eventually([&] { return idle.GetState() == ZnThread::kStateIdle; }));
  idle.Terminate(3);
  ASSERT_TRUE(idle.WaitForThreadToExit(kGenerous));
  EXPECT_EQ(idle.GetState(), ZnThread::kStateIdle);  // never reached its end
  EXPECT_EQ(idlePhases.seen.load(), 1);

  never.SetNotification(&neverPhases);
  never.Terminate(0);  // at its start gate: it never runs
  ASSERT_TRUE(never.WaitForThreadToExit(kGenerous));
  EXPECT_EQ(neverPhases.seen.load(), 0);
  EXPECT_EQ(never.GetId(), 0u);
}

// A thread is not cancelled while it holds a critical section at any level;
// its first wait after it left the last level ends it.
TEST(ZnNativeThreadTest, TerminateWaitsUntilTheLastCriticalSectionIsLeft) {
  for (int levels : {1, 2}) {
    ZnCriticalSection section;
    ZnEvent holding(true), go(true), never(true);
    std::atomic<int> reached{0};
    FunctionWork work([&] {
      for (int level = 0; level < levels; ++level) section.Enter();
      holding.Signal();
      go.Wait(INFINITE);
      for (reached = 1; reached <= levels; ++reached) {
        section.Leave();
        never.Wait(1);
      }
    });
    ZnThread thread(0);
    ASSERT_TRUE(thread.AssignWork(&work, 0));
    ASSERT_EQ(holding.Wait(kGenerous), 0);
    thread.Terminate(0);
    go.Signal();
    ASSERT_TRUE(thread.WaitForThreadToExit(kGenerous));
    EXPECT_EQ(reached.load(), levels) << levels << " levels: ended by the wait after the last Leave";
  }
}

TEST(ZnNativeThreadTest, TimeSpentSuspendedCountsTowardASleep) {
  ZnThread thread(0);
  std::atomic<long> id{0};
  FunctionWork work([&] {
    id = ThreadId();
    ZnSleeper::Snooze(1500);
  });
  ASSERT_TRUE(thread.AssignWork(&work, 0));
  ASSERT_TRUE(Eventually([&] { return id.load() != 0 && Asleep(id.load()); }));
  auto const sleepEnd = std::chrono::steady_clock::now() + std::chrono::milliseconds(1500);
  thread.Suspend();
  EXPECT_TRUE(Eventually([&] { return std::chrono::steady_clock::now() > sleepEnd; }));
  thread.Resume();
  // Its end has passed: it does not sleep the time that was left again.
  EXPECT_EQ(work.done.Wait(1000), 0);
  thread.SignalShutdown(true);
}

TEST(ZnNativeThreadTest, ASuspendedThreadHoldsUpNoOtherThread) {
  ZnEvent autoReset(false), manualReset(true);
  std::atomic<bool> stop{false};
  ZnThread inbox(0);
  FunctionWork reader([&] {
    for (ThreadMessage message; !stop.load();) GetThreadMessage(&message, 10);
  });
  ASSERT_TRUE(inbox.AssignWork(&reader, 0));
  // Workers that go through every lock of the events, the message queues
  // and thread start, round after round.
  constexpr int kWorkers = 3;
  std::atomic<long> rounds[kWorkers] = {};
  std::vector<std::unique_ptr<FunctionWork>> jobs;
  std::vector<std::unique_ptr<ZnThread>> workers;
  for (int w = 0; w < kWorkers; ++w) {
    jobs.push_back(std::make_unique<FunctionWork>([&, w] {
      for (long round = 0; !stop.load(); rounds[w].store(++round)) {
        autoReset.Signal();
        autoReset.Wait(0);
        autoReset.Pulse();
        manualReset.Signal();
        manualReset.Reset();
        inbox.PostThreadMessageA(0x400, 0, round);
        if (round % 16 == 0) ZnThread(0).SignalShutdown(true);
      }
    }));
    workers.push_back(std::make_unique<ZnThread>(0));
    ASSERT_TRUE(workers.back()->AssignWork(jobs.back().get(), 0));
  }
  std::mt19937 random(7);
  int heldUp = 0;
  for (int turn = 0; turn < 200 && heldUp == 0; ++turn) {
    int const target = static_cast<int>(random() % kWorkers);
    workers[target]->Suspend();
    for (unsigned spin = random() % 1000; spin > 0; --spin) std::this_thread::yield();
    // The others get on, whatever the suspended one was doing.
    auto const others = [&] { return rounds[0] + rounds[1] + rounds[2] - rounds[target]; };
    long const before = others();
    heldUp += Eventually([&] { return others() != before; }, 5) ? 0 : 1;
    workers[target]->Resume();
  }
  EXPECT_EQ(heldUp, 0);
  stop.store(true);
  for (auto &worker : workers) worker->SignalShutdown(true);
  inbox.SignalShutdown(true);
}

// Levels 0 (lowest) to 5 (time critical) move the nice value the thread
// started with by +10, +5, 0, -5, -10 and -20. Lowering a nice value needs a
// privilege: without it those levels change nothing, so they go first.
TEST(ZnNativeThreadTest, PriorityLevelsMapToNiceValues) {
  ZnThread thread(0);
  ASSERT_TRUE(RunOn(thread, [] {}));
  int const start = NiceOf(thread);
  ASSERT_EQ(errno, 0);
  id_t const id = static_cast<id_t>(thread.GetId());
  bool const mayLower = setpriority(PRIO_PROCESS, id, start - 1) == 0 && setpriority(PRIO_PROCESS, id, start) == 0;
  struct {
    int level, offset;
  } const levels[] = {{5, -20}, {4, -10}, {3, -5}, {2, 0}, {1, 5}, {0, 10}};
  for (auto const &row : levels) {
    thread.SetPriority(row.level);
    int const nice = row.offset < 0 && !mayLower ? start : std::clamp(start + row.offset, -20, 19);
    EXPECT_EQ(NiceOf(thread), nice) << "level " << row.level;
  }
  thread.SetPriority(6);
  thread.SetPriority(-1);
  EXPECT_EQ(NiceOf(thread), std::min(start + 10, 19)) << "other levels change nothing";
  thread.SignalShutdown(true);
}

TEST(ZnNativeThreadTest, MessagesReachLibraryThreadsOnly) {
  ZnThread thread(0);
  ASSERT_TRUE(Eventually([&] { return thread.GetId() != 0; }));
  EXPECT_TRUE(thread.PostThreadMessageA(0x400, 7, -9));
  EXPECT_TRUE(thread.PostThreadMessageA(WM_QUIT, 0, 0));
  ASSERT_TRUE(RunOn(thread, [&] {
    ThreadMessage message;
    ASSERT_EQ(GetThreadMessage(&message, kGenerous), WaitResult::kSignalled);
    EXPECT_EQ(message.message, 0x400u);
    EXPECT_EQ(message.wParam, 7u);
    EXPECT_EQ(message.lParam, -9);
    ASSERT_EQ(GetThreadMessage(&message, kGenerous), WaitResult::kSignalled);
    EXPECT_EQ(message.message, WM_QUIT);
    EXPECT_EQ(GetThreadMessage(&message, 0), WaitResult::kTimeout);
  }));
  // A timed wait takes a message posted while it waits.
  FunctionWork late([&] {
    ThreadMessage message;
    EXPECT_EQ(GetThreadMessage(&message, kGenerous), WaitResult::kSignalled);
  });
  ASSERT_TRUE(Eventually([&] { return thread.AssignWork(&late, 0); }));
  ASSERT_TRUE(Eventually([&] { return thread.GetState() == ZnThread::kStateWorking && Asleep(thread.GetId()); }));
  EXPECT_TRUE(thread.PostThreadMessageA(0x401, 0, 0));
  EXPECT_EQ(late.done.Wait(kGenerous), 0);
  thread.SignalShutdown(true);
  EXPECT_FALSE(thread.PostThreadMessageA(0x400, 0, 0));  // its queue went with it

  OnForeignThread([] {
    ZnThread adopted(ZnThread::kAdoptCallingThread);
    EXPECT_FALSE(adopted.PostThreadMessageA(0x400, 0, 0));
    ThreadMessage message;
    EXPECT_EQ(GetThreadMessage(&message, 0), WaitResult::kFailed);
  });
}

TEST(ZnNativeThreadTest, HandlesOutliveTheThreadAndItsObject) {
  auto *thread = new ZnThread(ZnThread::kSelfDeleting | ZnThread::kStartSuspended);
  thread->ModState(ZnThread::kKeepThreadData);  // so that the copy's end leaves our data alone
  ZnThread copy(*thread);
  thread->Resume();
  thread->SignalShutdown(true);  // the thread, its object and its handle are gone
  EXPECT_TRUE(copy.WaitForThreadToExit(0));
  EXPECT_TRUE(ZnNativeThreadWaitObject(nullptr).Wait(0));  // no thread: the wait fails, which is not a timeout
  EXPECT_FALSE(ZnPrimitiveThreadWaitObject().Wait(0));
}

}  // namespace
