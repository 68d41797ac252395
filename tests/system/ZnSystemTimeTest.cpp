#include <znutil/system/ZnSystemTime.h>

#include <cstdint>
#include <ctime>

#include <gtest/gtest.h>

#include "TestClocks.h"

namespace {

using namespace znutil_test;

char const kThreeHoursEast[] = "XYZ-3";
// Central Europe: UTC+1, and UTC+2 from the last Sunday of March to the last Sunday of October.
char const kCentralEurope[] = "CET-1CEST,M3.5.0,M10.5.0/3";

ZnSystemTime Make(SYSTEMTIME const &fields, int kind) {
  ZnSystemTime time(kind);
  static_cast<SYSTEMTIME &>(time) = fields;
  return time;
}

std::uint64_t UtcTicks(ZnSystemTime const &time) {
  FILETIME file = FILETIME();
  time.Convert(&file);
  return TicksOf(file);
}

TEST(ZnSystemTimeTest, TakesBrokenDownTimeWithoutMilliseconds) {
  EXPECT_EQ(FieldsOf(ZnSystemTime(3)), FieldsOf(Fields(0, 0, 0, 0, 0, 0, 0)));  // zeroed, not left unset
  std::time_t const leapDay = 1709251139;  // 2024-02-29 23:58:59 UTC, a Thursday
  std::tm calendar;
  gmtime_r(&leapDay, &calendar);
  ZnSystemTime time(0);
  time.wMilliseconds = 321;
  time = calendar;
  EXPECT_EQ(FieldsOf(time), FieldsOf(Fields(2024, 2, 29, 23, 58, 59, 0, 4)));
  EXPECT_EQ(FieldsOf(ZnSystemTime(calendar, 1)), FieldsOf(time));
}

TEST(ZnSystemTimeTest, GoesToAndFromZnTimeInLocalTimeWhateverTheKind) {
  ScopedTimeZone zone(kThreeHoursEast);
  ZnTime const instant(86400 + 61, 750);
  EXPECT_EQ(FieldsOf(ZnSystemTime(instant, 0)), FieldsOf(Fields(1970, 1, 2, 3, 1, 1, 0, 5)));
  EXPECT_EQ(FieldsOf(ZnSystemTime(instant, 1)), FieldsOf(Fields(1970, 1, 2, 3, 1, 1, 0, 5)));
  ZnTime const back = Make(Fields(1970, 1, 2, 3, 1, 1, 500), 1);  // through mktime: local, no milliseconds
  EXPECT_EQ(back, ZnTime(86400 + 61, 0));
}

TEST(ZnSystemTimeTest, TakesFileTimeInLocalTimeForKindZeroOnly) {
  ScopedTimeZone zone(kThreeHoursEast);
  FILETIME const file = FileTimeOf(TicksOfUnix(61, 234567800));  // sub-millisecond ticks are cut
  EXPECT_EQ(FieldsOf(ZnSystemTime(file, 0)), FieldsOf(Fields(1970, 1, 1, 3, 1, 1, 234, 4)));
  EXPECT_EQ(FieldsOf(ZnSystemTime(file, 2)), FieldsOf(Fields(1970, 1, 1, 0, 1, 1, 234, 4)));
  ZnSystemTime kept = Make(Fields(2000, 1, 1, 0, 0, 0, 0), 1);
  kept = FileTimeOf(0x8000000000000000ull);  // beyond what converts
  EXPECT_EQ(FieldsOf(kept), FieldsOf(Fields(2000, 1, 1, 0, 0, 0, 0)));
}

TEST(ZnSystemTimeTest, ConvertsToUtcFileTimeWhateverKindItWasCopiedFrom) {
  ScopedTimeZone zone(kThreeHoursEast);
  ZnSystemTime const utc = Make(Fields(1970, 1, 1, 3, 0, 0, 5), 1);
  ZnSystemTime const local(utc, 0);
  EXPECT_EQ(FieldsOf(local), FieldsOf(utc));
  EXPECT_EQ(UtcTicks(local), TicksOfUnix(0, 5000000));
  EXPECT_EQ(UtcTicks(utc), TicksOfUnix(3 * 3600, 5000000));
  FILETIME untouched = FileTimeOf(42);
  Make(Fields(2023, 2, 29, 0, 0, 0, 0), 1).Convert(&untouched);  // no such day
  EXPECT_EQ(TicksOf(untouched), 42u);
}

TEST(ZnSystemTimeTest, LocalConversionsFollowDaylightSavingOfTheInstant) {
  ScopedTimeZone zone(kCentralEurope);
  struct Case {
    std::int64_t utcSeconds;
    WORD localHour;
  } const cases[] = {
      {1625140800, 14},  // 2021-07-01 12:00 UTC, summer time
      {1609502400, 13},  // 2021-01-01 12:00 UTC, winter time
  };
  for (Case const &c : cases) {
    ZnSystemTime const local(FileTimeOf(TicksOfUnix(c.utcSeconds)), 0);
    EXPECT_EQ(local.wHour, c.localHour);
    EXPECT_EQ(UtcTicks(local), TicksOfUnix(c.utcSeconds));
  }
}

TEST(ZnSystemTimeTest, ConvertsToTmWithTodaysDaylightSavingFlag) {
  ScopedTimeZone zone(kCentralEurope);
  std::time_t const now = std::time(nullptr);
  std::tm present;
  localtime_r(&now, &present);
  for (WORD month : {1, 7}) {
    std::tm calendar = std::tm();
    calendar.tm_yday = 99;
    Make(Fields(2021, month, 15, 10, 20, 30, 400, 6), 0).Convert(&calendar);
    EXPECT_EQ((std::array<int, 8>{calendar.tm_year, calendar.tm_mon, calendar.tm_mday, calendar.tm_hour,
                                  calendar.tm_min, calendar.tm_sec, calendar.tm_wday, calendar.tm_yday}),
              (std::array<int, 8>{121, month - 1, 15, 10, 20, 30, 6, 0}));
    EXPECT_EQ(calendar.tm_isdst, present.tm_isdst) << "the flag is the present's, not the value's";
  }
}

TEST(ZnSystemTimeTest, ReadsTheWallClockKeepingTheKind) {
  ScopedTimeZone zone(kThreeHoursEast);
  std::int64_t const before = WallSeconds();
  ZnSystemTime utc(1), local(1);  // kind 1 converts the fields as UTC
  utc.GetSystemTime();
  local.GetLocalTime();
  std::int64_t const after = WallSeconds();
  EXPECT_GE(UtcTicks(utc), TicksOfUnix(before));
  EXPECT_LT(UtcTicks(utc), TicksOfUnix(after + 1));
  EXPECT_GE(UtcTicks(local), TicksOfUnix(before + 3 * 3600));
  EXPECT_LT(UtcTicks(local), TicksOfUnix(after + 3 * 3600 + 1));
}

}  // namespace
