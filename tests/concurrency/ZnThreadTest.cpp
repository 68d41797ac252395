#include <znutil/concurrency/ZnThread.h>

#include <gtest/gtest.h>

#include "ThreadTestSupport.h"

namespace {

using namespace znutil_test;

// Records the phases it is told of, with the thread they came from.
class PhaseRecorder : public ZnThreadNotify {
 public:
  void Notify(int phase, ZnThread *thread) override {
    foundByGetThread[phase].store(ZnThread::GetThread() == thread);
    (phase == 0 ? started : ended).store(thread);
  }
  std::atomic<ZnThread *> started{nullptr}, ended{nullptr};
  std::atomic<bool> foundByGetThread[2] = {};
};

// A self-deleting thread that reports its deletion. It starts suspended so
// that the new thread never sees it half constructed.
class TrackedThread : public ZnThread {
 public:
  explicit TrackedThread(std::atomic<bool> *deleted) : ZnThread(kSelfDeleting | kStartSuspended), deleted_(deleted) {
    Resume();
  }
  ~TrackedThread() override { deleted_->store(true); }

 private:
  std::atomic<bool> *deleted_;
};

// A busy thread refuses work, and a shutdown while it works ends it when
// the work returns.
TEST(ZnThreadTest, StateGoesFromIdleToWorkingAndEnded) {
  ZnThread thread(0);
  auto const idle = [&] { return thread.GetState() == ZnThread::kStateIdle; };
  ASSERT_TRUE(Eventually(idle));
  unsigned long const id = thread.GetId();
  EXPECT_NE(id, 0u);

  GatedWork first, second;
  ASSERT_TRUE(thread.AssignWork(&first, 0));
  ASSERT_EQ(first.started.Wait(kGenerous), 0);
  EXPECT_FALSE(thread.AssignWork(&second, 0));
  EXPECT_EQ(thread.GetState(), ZnThread::kStateWorking);
  first.release.Signal();
  ASSERT_TRUE(Eventually(idle));
  EXPECT_EQ(first.runs.load(), 1);
  EXPECT_EQ(second.started.Wait(0), 1);  // refused work is not queued

  ASSERT_TRUE(thread.AssignWork(&second, 0));
  ASSERT_EQ(second.started.Wait(kGenerous), 0);
  thread.SignalShutdown(false);
  EXPECT_EQ(thread.GetState(), ZnThread::kStateWorking | ZnThread::kShutdownRequested);
  EXPECT_FALSE(thread.WaitForThreadToExit(0));
  second.release.Signal();
  ASSERT_TRUE(thread.WaitForThreadToExit(kGenerous));
  EXPECT_EQ(second.runs.load(), 1);
  EXPECT_EQ(thread.GetState(), ZnThread::kStateEnded);  // the shutdown bit is wiped too
  EXPECT_EQ(thread.GetId(), id);
}

TEST(ZnThreadTest, SuspendedStartRunsOnlyAfterResumeAndTakesWorkAssignedBefore) {
  PhaseRecorder phases;
  ZnThread thread(ZnThread::kStartSuspended);
  thread.SetNotification(&phases);
  GatedWork work;
  work.release.Signal();
  EXPECT_TRUE(thread.AssignWork(&work, 0));  // no wake event exists yet
  EXPECT_EQ(thread.GetState(), ZnThread::kStateConstructed);
  thread.Suspend();  // previous count 1: the mark is set
  EXPECT_EQ(thread.GetState(), ZnThread::kStateConstructed | ZnThread::kStateSuspended);
  thread.Resume();  // previous count 2: still held back
  for (int i = 0; i < 100; ++i) std::this_thread::yield();
  EXPECT_EQ(phases.started.load(), nullptr);
  EXPECT_EQ(thread.GetId(), 0u);

  thread.Resume();  // previous count 1: it starts
  EXPECT_EQ(work.started.Wait(kGenerous), 0);
  ASSERT_TRUE(Eventually([&] { return thread.GetState() == ZnThread::kStateIdle; }));  // SetState wipes the mark
  EXPECT_EQ(phases.started.load(), &thread);
  EXPECT_TRUE(phases.foundByGetThread[0].load());
  EXPECT_EQ(phases.ended.load(), nullptr);
  thread.SignalShutdown(true);
  EXPECT_EQ(work.runs.load(), 1);
  EXPECT_EQ(phases.ended.load(), &thread);
  EXPECT_TRUE(phases.foundByGetThread[1].load());
}

// ModState ORs in only the high byte, and the thread's end wipes it.
TEST(ZnThreadTest, ShutdownOfAThreadNotYetStartedEndsItBeforeItIdles) {
  ZnThread thread(ZnThread::kStartSuspended);
  thread.ModState(0x12345);
  EXPECT_EQ(thread.GetState(), ZnThread::kStateConstructed | 0x2300u);
  thread.ModState(ZnThread::kKeepThreadData);
  EXPECT_EQ(thread.GetState(), ZnThread::kStateConstructed | 0x2300u | ZnThread::kKeepThreadData);
  thread.SignalShutdown(false);
  thread.Resume();
  ASSERT_TRUE(thread.WaitForThreadToExit(kGenerous));
  EXPECT_EQ(thread.GetState(), ZnThread::kStateEnded);
  EXPECT_NE(thread.GetId(), 0u);
}

TEST(ZnThreadTest, ManyShutdownsOfSelfDeletingThreadsRaceNoWorkerIntoASleepForEver) {
  // Shutdown asked for at every point of the loop: right after work,
  // while idle, while the thread sets itself idle.
  for (int i = 0; i < 200; ++i) {
    std::atomic<bool> deleted{false};
    ZnThread *thread = new TrackedThread(&deleted);
    GatedWork work;
    work.release.Signal();
    thread->AssignWork(&work, 0);
    if (i % 2 == 0) work.started.Wait(kGenerous);
    thread->SignalShutdown(true);
    EXPECT_TRUE(deleted.load()) << "a self-deleting thread is gone when shutdown returns";
    EXPECT_TRUE(i % 2 != 0 || work.runs.load() == 1) << "work taken before the shutdown has run";
  }
}

// An idle thread ends on SignalShutdown(false); a copy keeps its handle.
TEST(ZnThreadTest, CopySharesTheThreadAndMayOutliveIt) {
  auto *original = new ZnThread(0);
  ASSERT_TRUE(RunOn(*original, [] {}));
  ZnThread copy(*original);
  EXPECT_EQ(copy.GetId(), original->GetId());
  EXPECT_EQ(copy.GetState(), original->GetState());
  original->SignalShutdown(false);
  EXPECT_TRUE(copy.WaitForThreadToExit(kGenerous));
  delete original;  // the copy's handle and wake event stay good
  EXPECT_TRUE(copy.WaitForThreadToExit(0));

  ZnThread assigned(0);
  for (int i = 0; i < 1000; ++i) ASSERT_FALSE(assigned.WaitForThreadToExit(0)) << "and leaves nothing open";
  assigned.SignalShutdown(true);  // its thread must be gone before it is overwritten
  EXPECT_TRUE(assigned.WaitForThreadToExit(0));
  assigned = copy;
  EXPECT_EQ(assigned.GetId(), copy.GetId());
  EXPECT_TRUE(assigned.WaitForThreadToExit(0));
}

}  // namespace
