#include <znutil/concurrency/ZnSleeper.h>

#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "../system/TestClocks.h"

namespace {

using Sleeps = std::vector<std::uint32_t>;
using znutil_test::SimulatedClock;

TEST(ZnSleeperTest, SnoozeOfMillisecondsSleepsOnce) {
  SimulatedClock clock(0);
  ZnSleeper::Snooze(250);
  ZnSleeper::Snooze(0);
  ZnSleeper::Snooze(-1);  // the system's INFINITE
  EXPECT_EQ(clock.Sleeps(), (Sleeps{250, 0, 0xFFFFFFFF}));
}

TEST(ZnSleeperTest, SnoozeOfASpanSleepsInOneSecondPieces) {
  struct Case {
    ZnTime span;
    Sleeps sleeps;
  } const cases[] = {
      {ZnTime(2, 300), {1000, 1000, 300}},
      {ZnTime(0, 0), {0}},  // still one sleep
      {ZnTime(0, 999), {999}},
      {ZnTime(1, 0), {1000, 0}},  // elapsed equal to the span is not above it
      {ZnTime(-3, 0), {0}},
  };
  for (Case const &c : cases) {
    SimulatedClock clock(5000);
    ZnSleeper::Snooze(c.span);
    EXPECT_EQ(clock.Sleeps(), c.sleeps) << c.span;
  }
}

TEST(ZnSleeperTest, ClockJumpPastTheSpanEndsTheSnooze) {
  SimulatedClock clock(0);
  clock.JumpOnNextSleep(5000);
  ZnSleeper::Snooze(ZnTime(3, 300));
  EXPECT_EQ(clock.Sleeps(), (Sleeps{1000}));
}

TEST(ZnSleeperTest, LastPieceIsTheMillisecondPartNotTheTimeLeft) {
  SimulatedClock clock(0);
  clock.JumpOnNextSleep(200);
  ZnSleeper::Snooze(ZnTime(1, 500));
  EXPECT_EQ(clock.Sleeps(), (Sleeps{1000, 500}));
}

TEST(ZnSleeperTest, ElapsedKeepsTheWrapRule) {
  SimulatedClock clock(0xFFFFFF00);
  clock.JumpOnNextSleep(1);  // 1001 across the wrap counts as 1000, not above
  ZnSleeper::Snooze(ZnTime(1, 0));
  EXPECT_EQ(clock.Sleeps(), (Sleeps{1000, 0}));
}

TEST(ZnSleeperTest, SleepsForRealWithoutAStandIn) {
  ZnSleeper sleeper;
  sleeper = ZnSleeper();
  ZnSleeper::Snooze(1);
  ZnSleeper::Snooze(ZnTime(0, 1));
}

}  // namespace
