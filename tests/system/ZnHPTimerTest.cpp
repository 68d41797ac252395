#include <znutil/system/ZnHPTimer.h>

#include <gtest/gtest.h>

namespace {

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

}  // namespace
