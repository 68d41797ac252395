// The tick count with its wrap rule, and the two timers built on the clocks: ZnHPTimer on the performance
// counter, ZnStopWatch on the ticks.
#include <znutil/system/ZnHPTimer.h>
#include <znutil/system/ZnStopWatch.h>
#include <znutil/system/ZnTickCount.h>

#include <chrono>
#include <cstdint>

#include <gtest/gtest.h>

#include "TestClocks.h"

namespace {

using znutil_test::SimulatedClock;

TEST(ZnTickCountTest, SubtractionKeepsTheWrapRule) {
  // 5 - 0xFFFFFFFF is 6 across the wrap, less the rule's 1.
  ZnULong const cases[][3] = {{10, 3, 7}, {5, 5, 0}, {0xFFFFFFFF, 0, 0xFFFFFFFF}, {0, 1, 0xFFFFFFFE},
                              {5, 0xFFFFFFFF, 5}, {0, 0xFFFFFFFF, 0}};
  for (auto const &c : cases) EXPECT_EQ(ZnSubtractTickCounts(c[0], c[1]), c[2]) << c[0] << " - " << c[1];
}

TEST(ZnTickCountTest, CountsMonotonicMillisecondsOrReadsTheStandIn) {
  auto const monotonic = [] {
    auto const since = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(since).count());
  };
  std::uint32_t const before = monotonic();
  ZnULong const tick = ZnGetTickCount();
  EXPECT_LE(static_cast<std::uint32_t>(tick - before), static_cast<std::uint32_t>(monotonic() - before));
  SimulatedClock clock(0xFFFFFFFF);
  EXPECT_EQ(ZnGetTickCount(), 0xFFFFFFFFu);
  clock.Advance(1);
  EXPECT_EQ(ZnGetTickCount(), 0u);
}

TEST(ZnHPTimerTest, CountsNanosecondsAndMeasuresFromStartToStop) {
  EXPECT_TRUE(ZnHPTimer::Initialize()) << "the first call, which reads the frequency, succeeds";
  ZnHPTimer timer;
  EXPECT_EQ(ZnHPTimer::GetFrequencyAsLong(), 1000000000LL);
  EXPECT_EQ(ZnHPTimer::GetFrequency(), 1e9);
  EXPECT_EQ(timer.GetFinishTimeAsLong(), 0);
  long long const start = timer.Start();
  long long finish = timer.Stop();
  while (finish == start) finish = timer.Stop();
  EXPECT_EQ(timer.GetStartTimeAsLong(), start);
  EXPECT_EQ(timer.GetFinishTimeAsLong(), finish);
  EXPECT_LT(start, finish);
  long long total = 5;
  timer.AccumTimer(total);
  timer.AccumTimer(total);
  EXPECT_EQ(total, 5 + 2 * (finish - start));
  double const milliseconds = timer.GetElapsedTimeInMs();
  EXPECT_DOUBLE_EQ(milliseconds, static_cast<double>(finish - start) / 1e9 * 1000.0);
  EXPECT_EQ(timer.GetElapsedTimeAsZnTime(), ZnTime(static_cast<long>(milliseconds)));
}

TEST(ZnStopWatchTest, ExpiresOnlyStrictlyAfterThePeriod) {
  SimulatedClock clock(5000);
  ZnStopWatch watch;
  EXPECT_EQ(watch.Period(), 0u);
  EXPECT_EQ(watch.GetStopTime(), ZnTime(0, 0));
  watch.Start(1000);
  EXPECT_EQ(watch.Period(), 1000u);
  clock.Advance(1000);
  EXPECT_FALSE(watch.HasExpired());
  clock.Advance(1);
  EXPECT_TRUE(watch.HasExpired());
  EXPECT_EQ(watch.GetStopTime(), ZnTime(6, 1));
  EXPECT_EQ(watch.GetElapsed(), ZnTime(1, 1));
}

TEST(ZnStopWatchTest, StartWithASpanSetsThePeriodAndPlainStartAndResetKeepIt) {
  SimulatedClock clock(100);
  ZnStopWatch watch;
  watch.Start(ZnTime(2, 500));
  EXPECT_EQ(watch.Period(), 2500u);
  clock.Advance(7);
  watch.Start();
  EXPECT_EQ(watch.GetStartTime(), ZnTime(0, 107));
  clock.Advance(30);
  watch.Stop();
  clock.Advance(5);
  watch.Reset();
  EXPECT_EQ(watch.GetStartTime(), ZnTime(142));
  EXPECT_EQ(watch.GetStopTime(), ZnTime(137));
  EXPECT_EQ(watch.Period(), 2500u);
  EXPECT_EQ(ZnStopWatch::GetTickCount(), 142u);
}

TEST(ZnStopWatchTest, ResumeContinuesThePausedSpanAndTheWrapRuleHolds) {
  SimulatedClock clock(1000);
  ZnStopWatch watch;
  watch.Start();
  clock.Advance(300);
  watch.Pause();
  clock.Advance(5000);
  watch.Resume();
  EXPECT_EQ(watch.ComputeElapsed(), 300u);
  clock.Advance(50);
  EXPECT_EQ(watch.MeasureElapsed(), 350u);

  clock.Set(0xFFFFFFF0);
  watch.Start();
  clock.Advance(0x20);
  EXPECT_EQ(watch.MeasureElapsed(), 0x1Fu) << "across the wrap, one short";
  EXPECT_EQ(watch.ComputeElapsed(), 0x1Fu);

  clock.Set(10);
  watch.Start();
  clock.Set(500);
  watch.Stop();
  clock.Set(100);  // the tick count has come round again: Resume mirrors the rule
  watch.Resume();
  EXPECT_EQ(watch.GetStartTime(), ZnTime(static_cast<long>(0xFFFFFFFFu - 390)));
  EXPECT_EQ(watch.MeasureElapsed(), 490u);
  clock.Set(490);
  watch.Resume();  // now equal to elapsed: mirrored as well
  EXPECT_EQ(watch.GetStartTime(), ZnTime(static_cast<long>(0xFFFFFFFFu)));
  EXPECT_EQ(watch.MeasureElapsed(), 490u);
}

}  // namespace
