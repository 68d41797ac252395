#include <znutil/concurrency/ZnEvent.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "EventTestSupport.h"

namespace {

using znutil_test::Eventually;

// Threads that each wait once for an event and count themselves out.
class Waiters {
 public:
  Waiters(ZnEvent &event, int count) : event_(event) {
    for (int i = 0; i < count; ++i) {
      threads_.emplace_back([this] {
        results_.fetch_add(event_.Wait(INFINITE));
        released_.fetch_add(1);
      });
    }
  }
  // Signals until every waiter is out, so that a failed test still ends.
  ~Waiters() {
    Eventually([this] {
      event_.Signal();
      return released_.load() == static_cast<int>(threads_.size());
    });
    for (std::thread &thread : threads_) thread.join();
  }

  int Released() const { return released_.load(); }
  // The sum of what Wait yielded to the waiters: 0 while none timed out.
  int Results() const { return results_.load(); }

 private:
  ZnEvent &event_;
  std::vector<std::thread> threads_;
  std::atomic<int> released_{0};
  std::atomic<int> results_{0};
};

TEST(ZnEventTest, SignalResetAndPulseOnOneThread) {
  for (bool manual : {true, false}) {
    SCOPED_TRACE(manual ? "manual reset" : "auto reset");
    ZnEvent event(manual);
    EXPECT_EQ(event.Wait(0), 1);
    EXPECT_TRUE(event.Pulse()) << "with nobody waiting a pulse only resets";
    EXPECT_EQ(event.Wait(0), 1);
    EXPECT_TRUE(event.Signal());
    EXPECT_TRUE(event.Signal());
    EXPECT_EQ(event.Wait(0), 0);
    EXPECT_EQ(event.Wait(manual ? INFINITE : 0), manual ? 0 : 1) << "only auto reset consumes the signal";
    EXPECT_TRUE(event.Reset());
    EXPECT_EQ(event.Wait(10), 1);
    event.Signal();
    EXPECT_TRUE(event.Pulse());
    EXPECT_EQ(event.Wait(0), 1);
    EXPECT_FALSE(event.IsWaiting());
  }
}

TEST(ZnEventTest, ManualResetReleasesEveryWaiterAndAutoResetOnePerSignal) {
  for (bool manual : {true, false}) {
    SCOPED_TRACE(manual ? "manual reset" : "auto reset");
    ZnEvent event(manual);
    Waiters waiters(event, 3);
    for (int round = 1; round <= 3; ++round) {
      event.Signal();
      int const released = manual ? 3 : round;
      EXPECT_TRUE(Eventually([&] { return waiters.Released() >= released; }));
      EXPECT_EQ(waiters.Released(), released);
      EXPECT_EQ(event.Wait(0), manual ? 0 : 1) << "only an auto-reset release uses up the signal";
    }
    EXPECT_EQ(waiters.Results(), 0);
  }
}

TEST(ZnEventTest, PulseReleasesTheWaitersOfTheMomentAndLeavesItUnsignalled) {
  for (bool manual : {true, false}) {
    ZnEvent event(manual);
    Waiters waiters(event, 2);
    EXPECT_TRUE(Eventually([&] {
      event.Pulse();
      return waiters.Released() == 2;
    }));
    EXPECT_EQ(waiters.Results(), 0);
    EXPECT_EQ(event.Wait(0), 1);
  }
}

TEST(ZnEventTest, SignalsPassBackAndForthWithoutLoss) {
  ZnEvent ping(false);
  ZnEvent pong(false);
  int const rounds = 2000;
  std::thread partner([&] {
    for (int i = 0; i < rounds; ++i) {
      ping.Wait(INFINITE);
      pong.Signal();
    }
  });
  int timeouts = 0;
  for (int i = 0; i < rounds; ++i) {
    ping.Signal();
    timeouts += pong.Wait(INFINITE);
  }
  partner.join();
  EXPECT_EQ(timeouts, 0);
  EXPECT_EQ(ping.Wait(0), 1);
  EXPECT_EQ(pong.Wait(0), 1);
}

TEST(ZnEventTest, WaitingFlagIsSharedAndTheFirstToLeaveClearsIt) {
  ZnEvent event(true);
  EXPECT_FALSE(event.IsWaiting());
  Waiters waiter(event, 1);
  ASSERT_TRUE(Eventually([&] { return event.IsWaiting(); }));
  ZnEvent const copy(event);
  ZnEvent assigned(true);
  assigned = event;
  EXPECT_TRUE(copy.IsWaiting()) << "a copy takes the flag as it stands";
  EXPECT_TRUE(assigned.IsWaiting()) << "and so does an assignment";
  EXPECT_EQ(event.Wait(0), 1);
  EXPECT_FALSE(event.IsWaiting()) << "cleared although the other thread still waits";
  EXPECT_EQ(waiter.Released(), 0);
  event.Signal();
  EXPECT_TRUE(Eventually([&] { return waiter.Released() == 1; }));
  EXPECT_TRUE(copy.IsWaiting()) << "each object has its own flag";
}

TEST(ZnEventTest, CopiesShareOneSystemEventThatLivesUntilTheLastGoes) {
  auto original = std::make_unique<ZnEvent>(false);
  ZnEvent copy(*original);
  copy.Signal();
  EXPECT_EQ(original->Wait(0), 0);
  EXPECT_EQ(copy.Wait(0), 1);
  ZnEvent assigned(true);
  assigned = *original;
  assigned.Signal();
  EXPECT_EQ(copy.Wait(0), 0);
  EXPECT_EQ(original->Wait(0), 1) << "auto reset, as the shared event is";
  ZnEvent const &alias = assigned;
  assigned = alias;
  original.reset();
  EXPECT_TRUE(assigned.Signal());
  EXPECT_EQ(copy.Wait(0), 0);
  Waiters waiter(copy, 1);
  assigned.Signal();
  EXPECT_TRUE(Eventually([&] { return waiter.Released() == 1; }));
}

}  // namespace
