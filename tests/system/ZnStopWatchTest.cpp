#include <znutil/system/ZnStopWatch.h>

#include <gtest/gtest.h>

#include "TestClocks.h"

namespace {

using znutil_test::SimulatedClock;

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
