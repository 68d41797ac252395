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
    std::uint32_t start, jump;  // the first sleep moves the clock on by `jump` more
    Sleeps sleeps;
  } const cases[] = {
      {ZnTime(2, 300), 5000, 0, {1000, 1000, 300}},
      {ZnTime(0, 0), 5000, 0, {0}},  // still one sleep
      {ZnTime(0, 999), 5000, 0, {999}},
      {ZnTime(1, 0), 5000, 0, {1000, 0}},  // elapsed equal to the span is not above it
      {ZnTime(-3, 0), 5000, 0, {0}},
      {ZnTime(3, 300), 0, 5000, {1000}},        // a clock jump past the span ends it
      {ZnTime(1, 500), 0, 200, {1000, 500}},    // the last piece is the millisecond part, not the time left
      {ZnTime(1, 0), 0xFFFFFF00, 1, {1000, 0}}, // 1001 across the wrap counts as 1000, not above
  };
  for (Case const &c : cases) {
    SCOPED_TRACE(c.span);
    SimulatedClock clock(c.start);
    clock.JumpOnNextSleep(c.jump);
    ZnSleeper::Snooze(c.span);
    EXPECT_EQ(clock.Sleeps(), c.sleeps);
  }
}

TEST(ZnSleeperTest, SleepsForRealWithoutAStandIn) {
  ZnSleeper sleeper;
  sleeper = ZnSleeper();
  ZnSleeper::Snooze(1);
  ZnSleeper::Snooze(ZnTime(0, 1));
}

}  // namespace
