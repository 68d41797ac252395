// The short-term locks: ZnLock, ZnCriticalSection and ZnAtomicWord.
#include <znutil/concurrency/ZnAtomicWord.h>
#include <znutil/concurrency/ZnCriticalSection.h>
#include <znutil/concurrency/ZnLock.h>

#include <climits>

#include <gtest/gtest.h>

#include "ThreadTestSupport.h"

// The lock yields the processor once between two tries: counting this
// thread's yields counts its tries.
thread_local int yields = 0;
extern "C" int sched_yield() noexcept {
  ++yields;
  return static_cast<int>(syscall(SYS_sched_yield));
}

namespace {

// Two threads each run `guarded` 20000 times on one plain counter, which
// only the guard protects; yields the count.
template <class Guarded>
long CountOnTwoThreads(Guarded guarded) {
  long counter = 0;
  znutil_test::Concurrently(2, [&] {
    for (int i = 0; i < 20000; ++i) guarded([&] { ++counter; });
  });
  return counter;
}

TEST(ZnLockTest, TestTriesAndCopiesOnOneThread) {
  ZnLock lock;
  lock.Unlock();  // freeing a free lock is harmless
  EXPECT_TRUE(lock.Test());
  EXPECT_TRUE(lock.Lock(0));
  EXPECT_FALSE(lock.Test());
  EXPECT_FALSE(lock.Test()) << "Test must not take or free the lock";
  // 0 makes one try, 10 two, 25 four; all must give up, and none frees it.
  struct {
    long timeout;
    int tries;
  } const cases[] = {{0, 1}, {10, 2}, {25, 4}, {30, 4}, {31, 5}};
  for (auto const &c : cases) {
    yields = 0;
    EXPECT_FALSE(lock.Lock(c.timeout));
    EXPECT_EQ(yields + 1, c.tries) << "Lock(" << c.timeout << ")";
  }
  EXPECT_FALSE(ZnLock(lock).Test()) << "a copy takes the state of the word";
  ZnLock assigned;
  assigned = lock;
  EXPECT_FALSE(assigned.Lock(0));
  lock.Unlock();
  EXPECT_TRUE(lock.Test());
}

TEST(ZnLockTest, ExcludesOtherThreadsAndAnyThreadMayUnlock) {
  ZnLock lock;
  ASSERT_TRUE(lock.Lock(-1));
  std::atomic<bool> acquired{false};
  std::thread waiter([&] {
    EXPECT_TRUE(lock.Lock(-1));
    acquired = true;
    lock.Unlock();
  });
  EXPECT_FALSE(acquired.load());
  lock.Unlock();
  waiter.join();
  EXPECT_TRUE(acquired.load());
  EXPECT_EQ(CountOnTwoThreads([&](auto increment) {
              lock.Lock(-1);
              increment();
              lock.Unlock();
            }),
            40000);
}

// Each thread enters twice: re-entry must not block its own holder. An
// assigned section keeps a state of its own.
TEST(ZnCriticalSectionTest, ReentersExcludesOtherThreadsAndAssignmentCopiesNoOwner) {
  ZnCriticalSection first, second;
  EXPECT_EQ(CountOnTwoThreads([&](auto increment) {
              first.Enter();
              first.Enter();
              increment();
              first.Leave();
              first.Leave();
            }),
            40000);
  first.Enter();
  second = first;
  std::thread([&] {
    second.Enter();  // would block for ever if the state were shared
    second.Leave();
  }).join();
  first.Leave();
}

TEST(ZnAtomicWordTest, OperationsYieldTheStatedValuesWrapAtThirtyTwoBitsAndLoseNothing) {
  ZnAtomicWord word;
  EXPECT_EQ(word.Get(), 0);
  EXPECT_EQ(word.Increment(), 1);
  EXPECT_EQ(word.Increment(), 2);
  EXPECT_EQ(word.Decrement(), 1);
  EXPECT_EQ(word.Set(42), 1) << "Set yields the old value";
  EXPECT_EQ(ZnAtomicWord(word).Get(), 42);
  word.Set(INT32_MAX);
  EXPECT_EQ(word.Increment(), INT32_MIN);
  EXPECT_EQ(word.Decrement(), INT32_MAX);
  word.Set(0);
  znutil_test::Concurrently(4, [&] {
    for (int i = 0; i < 10000; ++i) word.Increment();
  });
  EXPECT_EQ(word.Get(), 40000);
}

}  // namespace
