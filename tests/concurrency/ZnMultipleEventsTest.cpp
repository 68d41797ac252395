#include <znutil/concurrency/ZnMultipleEvents.h>

#include <cstdlib>
#include <memory>

#include <gtest/gtest.h>

#include "ThreadTestSupport.h"

namespace {

using znutil_test::Asleep;
using znutil_test::Eventually;

// An event is in a set once; the set waits for all its events, not any.
TEST(ZnMultipleEventsTest, AddsAnEventOnceRemovesItAndWaitsForAll) {
  ZnEvent first(false), second(true);
  ZnMultipleEvents set;
  set.AddEvent(&first);
  set.AddEvent(&first);
  set.RemoveEvent(&second);
  set.RemoveEvent(&first);
  EXPECT_EQ(set.Wait(50), 0) << "one removal empties the set, and an empty set returns at once";
  set.AddEvent(&first);
  set.AddEvent(&second);
  first.Signal();
  EXPECT_EQ(set.Wait(20), 1);
  EXPECT_EQ(first.Wait(0), 0) << "a wait that times out consumes nothing";
  second.Signal();
  first.Reset();
  EXPECT_EQ(set.Wait(0), 1) << "both must be signalled at the same moment";
  first.Signal();
  EXPECT_EQ(set.Wait(0), 0);
  EXPECT_EQ(first.Wait(0), 1) << "the auto-reset event is consumed";
  EXPECT_EQ(second.Wait(0), 0) << "the manual-reset event stays signalled";
  EXPECT_FALSE(first.IsWaiting());
  set.RemoveEvent(&first);
  EXPECT_EQ(set.Wait(0), 0) << "the signalled event that is left is all it waits for";
}

TEST(ZnMultipleEventsTest, SharesAutoResetEventsWithSingleWaiters) {
  ZnEvent shared(false), only(false);
  ZnMultipleEvents set;
  set.AddEvent(&shared);
  set.AddEvent(&only);
  std::atomic<int> released{0};
  std::thread all([&] { released += set.Wait(INFINITE) == 0 ? 1 : 100; });
  std::thread one([&] { released += shared.Wait(INFINITE) == 0 ? 1 : 100; });
  only.Signal();
  shared.Signal();
  EXPECT_TRUE(Eventually([&] { return released.load() >= 1; }));
  // Whoever took the first signal, one more release of the shared event
  // lets the other through.
  shared.Signal();
  EXPECT_TRUE(Eventually([&] { return released.load() == 2; }));
  all.join();
  one.join();
  EXPECT_EQ(only.Wait(0), 1) << "the wait for all consumed its auto-reset events";
  EXPECT_EQ(shared.Wait(0), 1);
}

// A pulse of an auto-reset event completes the rendezvous of one waiter
// whose other events are signalled, or releases one plain waiter.
TEST(ZnMultipleEventsTest, OnePulseOfAnAutoResetEventReleasesOneWaiterOfAnyKind) {
  for (bool const plainWaiter : {true, false}) {
    ZnEvent ready(true), go(false);
    ZnMultipleEvents set;
    set.AddEvent(&ready);
    set.AddEvent(&go);
    ready.Signal();
    std::atomic<long> ids[2] = {{0}, {0}};
    std::atomic<int> released{0}, results{0};
    auto waiter = [&](int index, bool plain) {
      return std::thread([&, index, plain] {
        ids[index] = znutil_test::ThreadId();
        results += plain ? go.Wait(INFINITE) : set.Wait(INFINITE);
        ++released;
      });
    };
    std::thread first = waiter(0, plainWaiter), second = waiter(1, false);
    // Both asleep in their waits: nobody else holds the event's lock.
    EXPECT_TRUE(Eventually([&] { return ids[0] && ids[1] && Asleep(ids[0]) && Asleep(ids[1]); }));
    go.Pulse();
    EXPECT_TRUE(Eventually([&] { return released.load() >= 1; }));
    go.Signal();  // for the waiter the pulse left
    EXPECT_TRUE(Eventually([&] { return released.load() == 2; }));
    EXPECT_EQ(go.Wait(0), 1) << "the pulse released a second waiter too (plain waiter: " << plainWaiter << ")";
    EXPECT_EQ(ready.Wait(0) + results.load(), 0);
    first.join();
    second.join();
  }
}

TEST(ZnMultipleEventsTest, WaitsThatTheSystemRefusesYieldZeroAtOnce) {
  ZnEvent event(false), copy(event);
  ZnMultipleEvents sharing;
  sharing.AddEvent(&event);
  sharing.AddEvent(&copy);
  EXPECT_EQ(sharing.Wait(50), 0) << "two objects with one system event";

  std::vector<std::unique_ptr<ZnEvent>> events;
  ZnMultipleEvents many;
  for (int i = 0; i < 65; ++i) events.push_back(std::make_unique<ZnEvent>(true));
  for (int i = 0; i < 64; ++i) many.AddEvent(events[i].get());
  EXPECT_EQ(many.Wait(0), 1) << "64 events are still waited on";
  for (auto const &each : events) each->Signal();
  EXPECT_EQ(many.Wait(0), 0);
  many.AddEvent(events[64].get());
  EXPECT_EQ(many.Wait(50), 0) << "the 65th makes the wait fail";
}

// Two waiters name the same events in opposite orders while others signal
// them: only locking the events in one fixed order keeps them from
// deadlocking. A deadlock shows as a timeout; the process then ends, since
// the stuck threads can never be joined.
TEST(ZnMultipleEventsTest, WaitersListingEventsInOtherOrdersDoNotDeadlock) {
  std::vector<std::unique_ptr<ZnEvent>> events;
  ZnMultipleEvents forward, backward;
  for (int i = 0; i < 4; ++i) events.push_back(std::make_unique<ZnEvent>(i % 2 == 0));
  for (int i = 0; i < 4; ++i) {
    forward.AddEvent(events[i].get());
    backward.AddEvent(events[3 - i].get());
  }
  std::atomic<int> finished{0};
  std::atomic<bool> stop{false};
  std::vector<std::thread> threads;
  for (ZnMultipleEvents *set : {&forward, &backward, &forward, &backward}) {
    threads.emplace_back([set, &finished] {
      for (int round = 0; round < 3000; ++round) set->Wait(round % 3);
      ++finished;
    });
  }
  threads.emplace_back([&] {
    while (!stop.load()) {
      for (auto &event : events) event->Signal();
      events[0]->Reset();
      events[2]->Reset();
    }
  });
  if (!Eventually([&] { return finished.load() == 4; }, 20)) {
    ADD_FAILURE() << "waiters on the same events in other orders deadlocked";
    std::_Exit(1);
  }
  stop = true;
  for (std::thread &thread : threads) thread.join();
}

}  // namespace
