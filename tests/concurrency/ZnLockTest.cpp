#include <znutil/concurrency/ZnLock.h>

#include <atomic>
#include <thread>

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

using znutil_test::CountOnTwoThreads;

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

}  // namespace
