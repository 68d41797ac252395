#include <znutil/concurrency/ZnThread.h>

#include <gtest/gtest.h>

#include "ThreadTestSupport.h"

namespace {

using namespace znutil_test;

ZnString const kName("Slot");

// A second Alloc keeps the first value, Free forgets it, and each thread
// sees only its own values.
TEST(ZnThreadDataTest, EachThreadSeesOnlyItsOwnValues) {
  ZnThread first(0), second(0);
  int firstValue = 1, secondValue = 2;
  ASSERT_TRUE(RunOn(first, [&] {
    EXPECT_TRUE(ZnThread::AllocThreadData(kName, &secondValue));
    EXPECT_FALSE(ZnThread::AllocThreadData(kName, &firstValue));
    EXPECT_EQ(ZnThread::GetThreadData(kName), &secondValue);
    ZnThread::FreeThreadData(kName);
    EXPECT_EQ(ZnThread::GetThreadData(kName), nullptr);
    EXPECT_TRUE(ZnThread::AllocThreadData(kName, &firstValue));
    // Many names: the bag grows past its first seven buckets.
    for (int i = 0; i < 100; ++i) ASSERT_TRUE(ZnThread::AllocThreadData(ZnString(i), &secondValue));
    EXPECT_EQ(ZnThread::GetThreadData(ZnString(99)), &secondValue);
  }));
  ASSERT_TRUE(RunOn(second, [&] {
    EXPECT_EQ(ZnThread::GetThreadData(kName), nullptr);
    EXPECT_TRUE(ZnThread::AllocThreadData(kName, &secondValue));
  }));
  std::pair<ZnThread *, int *> const owners[] = {{&first, &firstValue}, {&second, &secondValue}};
  for (auto const &owner : owners) {
    ASSERT_TRUE(RunOn(*owner.first, [&] {
      EXPECT_EQ(ZnThread::GetThreadData(kName), owner.second);
      EXPECT_EQ(ZnThread::GetThread(), owner.first);
    }));
    owner.first->SignalShutdown(true);
  }
}

// An adopted thread is found by GetThread and stores work that nothing runs.
TEST(ZnThreadDataTest, ForeignThreadHasNoDataUntilItMakesSomeOrIsAdopted) {
  std::thread([] {
    // A thread that ends without giving its heap back keeps it: let it be
    // a new one rather than one that library threads gave back.
    ZnFixedBlockAllocator ownHeap;
    int value = 3;
    EXPECT_EQ(ZnThread::GetThread(), nullptr);
    EXPECT_EQ(ZnThread::GetThreadData(kName), nullptr);
    EXPECT_FALSE(ZnThread::AllocThreadData(kName, &value));
    ZnThread::FreeThreadData(kName);  // quiet
    ZnThread::InitializeThreadData(nullptr);
    EXPECT_EQ(ZnThread::GetThread(), nullptr);
    EXPECT_TRUE(ZnThread::AllocThreadData(kName, &value));
    EXPECT_EQ(ZnThread::GetThreadData(kName), &value);
    ZnThread::DestroyThreadData();
    EXPECT_EQ(ZnThread::GetThreadData(kName), nullptr);
    EXPECT_FALSE(ZnThread::AllocThreadData(kName, &value));

    ZnThread adopted(ZnThread::kAdoptCallingThread);
    EXPECT_EQ(ZnThread::GetThread(), &adopted);
    EXPECT_EQ(adopted.GetId(), static_cast<unsigned long>(ThreadId()));
    EXPECT_FALSE(adopted.WaitForThreadToExit(0));
    GatedWork work;
    EXPECT_TRUE(adopted.AssignWork(&work, 0));  // stored; nothing runs it
    EXPECT_EQ(work.started.Wait(0), 1);
    EXPECT_EQ(adopted.GetState(), ZnThread::kStateConstructed);
    EXPECT_TRUE(ZnThread::AllocThreadData(kName, &value));  // left for the thread's end to destroy
  }).join();
}

TEST(ZnThreadDataTest, ReleaseTlsHidesEveryRecordUntilTheSlotIsMadeAgain) {
  int value = 5;
  ZnThread worker(0);
  ASSERT_TRUE(RunOn(worker, [&] { ASSERT_TRUE(ZnThread::AllocThreadData(kName, &value)); }));
  OnForeignThread([&] {
    ZnThread::InitializeThreadData(nullptr);
    ASSERT_TRUE(ZnThread::AllocThreadData(kName, &value));
    ZnThread::ReleaseTls();
    EXPECT_EQ(ZnThread::GetThreadData(kName), nullptr);
    EXPECT_FALSE(ZnThread::AllocThreadData(kName, &value));
  });
  ASSERT_TRUE(RunOn(worker, [&] {
    EXPECT_EQ(ZnThread::GetThread(), nullptr);
    EXPECT_EQ(ZnThread::GetThreadData(kName), nullptr);
    ZnThread::InitializeThreadData(&worker);  // a fresh record in a fresh slot
    EXPECT_EQ(ZnThread::GetThread(), &worker);
    EXPECT_EQ(ZnThread::GetThreadData(kName), nullptr);
  }));
  worker.SignalShutdown(true);
}

TEST(ZnThreadDataTest, DestroyingASelfDeletingThreadsObjectTakesTheCallersData) {
  OnForeignThread([] {
    int value = 6;
    auto *thread = new ZnThread(ZnThread::kSelfDeleting | ZnThread::kStartSuspended);
    for (bool keep : {false, true}) {
      ZnThread::InitializeThreadData(nullptr);
      ASSERT_TRUE(ZnThread::AllocThreadData(kName, &value));
      if (keep) thread->ModState(ZnThread::kKeepThreadData);
      { ZnThread copy(*thread); }  // deliberate: unless kept, the caller's data goes
      EXPECT_EQ(ZnThread::GetThreadData(kName), keep ? &value : nullptr);
    }
    thread->Resume();
    thread->SignalShutdown(true);
  });
}

}  // namespace
