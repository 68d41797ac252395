#include <znutil/system/ZnTime.h>

#include <array>
#include <climits>
#include <cstdint>
#include <ctime>
#include <sstream>

#include <gtest/gtest.h>

#include "TestClocks.h"

namespace {

TEST(ZnTimeTest, ConstructionSplitsMillisecondsAndStreamsThemPadded) {
  struct Case {
    ZnTime time;
    long seconds, milli;
    char const *text;
  } const cases[] = {
      {ZnTime(2500), 2, 500, "2.500"},   {ZnTime(0), 0, 0, "0.000"},        {ZnTime(2, 50), 2, 50, "2.050"},
      {ZnTime(3, -250), 3, -250, "3.250"},  // the sign of the milliseconds is lost
      {ZnTime(-5), 0, -5, "0.005"},      {ZnTime(-1500), -1, -500, "-1.500"},  // truncating division
      {ZnTime(1, 2500), 1, 500, "1.500"},                                       // the carry is dropped
  };
  for (Case const &c : cases) {
    std::ostringstream text;
    text << c.time;
    EXPECT_EQ(c.time.Seconds(), c.seconds) << c.text;
    EXPECT_EQ(c.time.Milli(), c.milli) << c.text;
    EXPECT_EQ(text.str(), c.text);
  }
  ZnTime assigned(7, 7);
  assigned = 4001;
  EXPECT_EQ(assigned, ZnTime(4, 1));
  std::wostringstream wide;
  wide << ZnTime(3, 7);
  EXPECT_EQ(wide.str(), L"3.007");
}

TEST(ZnTimeTest, DefaultAndUpdateReadTheWallClock) {
  std::int64_t const before = znutil_test::WallSeconds();
  ZnTime now, later(0);
  later.Update();
  std::int64_t const after = znutil_test::WallSeconds();
  for (ZnTime const &time : {now, later}) {
    EXPECT_TRUE(time.Seconds() >= before && time.Seconds() <= after) << time.Seconds();
    EXPECT_TRUE(time.Milli() >= 0 && time.Milli() <= 999) << time.Milli();
  }
}

TEST(ZnTimeTest, ComparesSecondsFirst) {
  ZnTime const early(1, 999), late(2, 0);
  EXPECT_TRUE(early < late && early <= late && late > early && late >= early && early != late);
  EXPECT_FALSE(early == late || early > late || early >= late || late < early || late <= early);
  EXPECT_TRUE(ZnTime(2, 1) > late);
  EXPECT_TRUE(late == ZnTime(2000) && late <= ZnTime(2000) && late >= ZnTime(2000));
}

TEST(ZnTimeTest, AdditionCarriesAndSubtractionGivesASpanWithNoSign) {
  EXPECT_EQ(ZnTime(1, 900) + ZnTime(0, 200), ZnTime(2, 100));
  EXPECT_EQ(ZnTime(1, 500) + ZnTime(0, 500), ZnTime(2, 0));
  EXPECT_EQ(ZnTime(-1500) + ZnTime(-600), ZnTime(-2, -100));
  ZnTime total(0, 999);
  total += ZnTime(0, 999);
  EXPECT_EQ(total, ZnTime(1, 998));
  EXPECT_EQ((ZnTime(INT32_MAX, 600) + ZnTime(0, 400)).Seconds(), INT32_MIN);  // 32-bit seconds wrap

  EXPECT_EQ(ZnTime(2, 100) - ZnTime(1, 900), ZnTime(0, 200));
  EXPECT_EQ(ZnTime(1, 0) - ZnTime(2, 0), ZnTime(1, 0));
  EXPECT_EQ(ZnTime(5, 250) - ZnTime(5, 250), ZnTime(0, 0));
  // Earlier minus later: seconds right in size, milliseconds not mirrored.
  EXPECT_EQ(ZnTime(1, 900) - ZnTime(2, 100), ZnTime(1, 800));
  ZnTime span(10, 0);
  span -= ZnTime(3, 1);
  EXPECT_EQ(span, ZnTime(6, 999));
}

TEST(ZnTimeTest, BreaksDownInLocalTimeAndUtc) {
  znutil_test::ScopedTimeZone zone("XYZ-3");  // three hours east of UTC
  ZnTime const epoch(86400 + 90, 0);
  std::tm const *utc = epoch.GreenwichMeanTime();
  ASSERT_NE(utc, nullptr);
  EXPECT_EQ((std::array<int, 5>{utc->tm_year, utc->tm_mday, utc->tm_hour, utc->tm_min, utc->tm_sec}),
            (std::array<int, 5>{70, 2, 0, 1, 30}));
  std::tm const *local = epoch.LocalTime();
  EXPECT_EQ(local, utc) << "both share the one result of the thread";
  EXPECT_EQ(local->tm_hour, 3);
  EXPECT_EQ(local->tm_wday, 5);
}

}  // namespace
