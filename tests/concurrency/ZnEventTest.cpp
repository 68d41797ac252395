#include <znutil/concurrency/ZnEvent.h>

#include <memory>

#include <gtest/gtest.h>

#include "ThreadTestSupport.h"

namespace {

using znutil_test::Eventually;

// Threads that each wait once for an event and count themselves out.
class Waiters {
 public:
  Waiters(ZnEvent &event, int count) : event_(event) {
    for (int i = 0; i < count; ++i) {
      threads_.emplace_back([this] {
        results.fetch_add(event_.Wait(INFINITE));
        released.fetch_add(1);
      });
    }
  }
  // Signals until every waiter is out, so that a failed test still ends.
  ~Waiters() {
    Eventually([this] {
      event_.Signal();
      return released.load() == static_cast<int>(threads_.size());
    });
    for (std::thread &thread : threads_) thread.join();
  }
  std::atomic<int> released{0};
  std::atomic<int> results{0};  // the sum of what Wait yielded: 0 while none timed out

 private:
  ZnEvent &event_;
  std::vector<std::thread> threads_;
};

// On one thread a signal stays until a reset or, with auto reset, a wait
// takes it; with nobody waiting a pulse only resets. A signal releases every
// waiter of a manual-reset event and one per signal of an auto-reset one; a
// pulse releases the waiters of the moment.
TEST(ZnEventTest, SignalResetAndPulse) {
  for (bool manual : {true, false}) {
    SCOPED_TRACE(manual ? "manual reset" : "auto reset");
    ZnEvent event(manual);
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
    {
      Waiters waiters(event, 3);
      for (int round = 1; round <= 3; ++round) {
        event.Signal();
        int const released = manual ? 3 : round;
        EXPECT_TRUE(Eventually([&] { return waiters.released.load() >= released; }));
        EXPECT_EQ(waiters.released.load(), released);
        EXPECT_EQ(event.Wait(0), manual ? 0 : 1) << "only an auto-reset release uses up the signal";
      }
      EXPECT_EQ(waiters.results.load(), 0);
    }
    event.Reset();
    Waiters waiters(event, 2);
    EXPECT_TRUE(Eventually([&] {
      event.Pulse();
      return waiters.released.load() == 2;
    }));
    EXPECT_EQ(waiters.results.load(), 0);
    EXPECT_EQ(event.Wait(0), 1) << "a pulse leaves the event unsignalled";
  }
}

TEST(ZnEventTest, SignalsPassBackAndForthWithoutLoss) {
  ZnEvent ping(false), pong(false);
  std::thread partner([&] {
    for (int i = 0; i < 2000; ++i) {
      ping.Wait(INFINITE);
      pong.Signal();
    }
  });
  int timeouts = 0;
  for (int i = 0; i < 2000; ++i) {
    ping.Signal();
    timeouts += pong.Wait(INFINITE);
  }
  partner.join();
  EXPECT_EQ(timeouts, 0);
  EXPECT_EQ(ping.Wait(0) + pong.Wait(0), 2);
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
  EXPECT_EQ(waiter.released.load(), 0);
  event.Signal();
  EXPECT_TRUE(Eventually([&] { return waiter.released.load() == 1; }));
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
  EXPECT_TRUE(Eventually([&] { return waiter.released.load() == 1; }));
}

}  // namespace
