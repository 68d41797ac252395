#include <znutil/system/ZnSystemTime.h>

#include <chrono>
#include <cstdint>
#include <ctime>

#include <gtest/gtest.h>

#include "TestClocks.h"

namespace {

using znutil_test::FileTimeOf;
using znutil_test::Fields;
using znutil_test::ScopedTimeZone;
using znutil_test::TicksOf;

std::uint64_t const kTicksAt1970 = 116444736000000000ull;
char const kThreeHoursEast[] = "XYZ-3";
// Central Europe: UTC+1, and UTC+2 from the last Sunday of March to the
// last Sunday of October.
char const kCentralEurope[] = "CET-1CEST,M3.5.0,M10.5.0/3";

std::uint64_t TicksOfUnix(std::int64_t seconds, int milliseconds = 0) {
  return kTicksAt1970 + static_cast<std::uint64_t>(seconds) * 10000000u + static_cast<std::uint64_t>(milliseconds) * 10000u;
}

ZnSystemTime Make(SYSTEMTIME const &fields, int kind) {
  ZnSystemTime time(kind);
  static_cast<SYSTEMTIME &>(time) = fields;
  return time;
}

void ExpectFields(SYSTEMTIME const &system, SYSTEMTIME const &expected, WORD dayOfWeek) {
  EXPECT_EQ(system.wYear, expected.wYear);
  EXPECT_EQ(system.wMonth, expected.wMonth);
  EXPECT_EQ(system.wDay, expected.wDay);
  EXPECT_EQ(system.wHour, expected.wHour);
  EXPECT_EQ(system.wMinute, expected.wMinute);
  EXPECT_EQ(system.wSecond, expected.wSecond);
  EXPECT_EQ(system.wMilliseconds, expected.wMilliseconds);
  EXPECT_EQ(system.wDayOfWeek, dayOfWeek);
}

std::int64_t WallSeconds() {
  return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch()).count();
}

TEST(ZnSystemTimeTest, KindConstructorZeroesTheFields) {
  ZnSystemTime const empty(3);
  ExpectFields(empty, Fields(0, 0, 0, 0, 0, 0, 0), 0);
}

TEST(ZnSystemTimeTest, TakesBrokenDownTimeWithoutMilliseconds) {
  std::tm calendar = std::tm();
  calendar.tm_year = 124;
  calendar.tm_mon = 1;
  calendar.tm_mday = 29;
  calendar.tm_wday = 4;
  calendar.tm_hour = 23;
  calendar.tm_min = 58;
  calendar.tm_sec = 59;
  ZnSystemTime time(0);
  time.wMilliseconds = 321;
  time = calendar;
  ExpectFields(time, Fields(2024, 2, 29, 23, 58, 59, 0), 4);
  ExpectFields(ZnSystemTime(calendar, 1), Fields(2024, 2, 29, 23, 58, 59, 0), 4);
}

TEST(ZnSystemTimeTest, TakesZnTimeInLocalTimeWhateverTheKind) {
  ScopedTimeZone zone(kThreeHoursEast);
  ZnTime const instant(86400 + 61, 750);
  ExpectFields(ZnSystemTime(instant, 0), Fields(1970, 1, 2, 3, 1, 1, 0), 5);
  ExpectFields(ZnSystemTime(instant, 1), Fields(1970, 1, 2, 3, 1, 1, 0), 5);
}

TEST(ZnSystemTimeTest, TakesFileTimeInLocalTimeForKindZeroOnly) {
  ScopedTimeZone zone(kThreeHoursEast);
  FILETIME const file = FileTimeOf(TicksOfUnix(61, 234) + 5678);  // sub-millisecond ticks are cut
  ExpectFields(ZnSystemTime(file, 0), Fields(1970, 1, 1, 3, 1, 1, 234), 4);
  ExpectFields(ZnSystemTime(file, 2), Fields(1970, 1, 1, 0, 1, 1, 234), 4);
  ZnSystemTime kept = Make(Fields(2000, 1, 1, 0, 0, 0, 0), 1);
  kept = FileTimeOf(0x8000000000000000ull);  // beyond what converts
  ExpectFields(kept, Fields(2000, 1, 1, 0, 0, 0, 0), 0);
}

TEST(ZnSystemTimeTest, ConvertsToUtcFileTime) {
  ScopedTimeZone zone(kThreeHoursEast);
  FILETIME file = FILETIME();
  Make(Fields(1970, 1, 1, 3, 0, 0, 5), 0).Convert(&file);
  EXPECT_EQ(TicksOf(file), TicksOfUnix(0, 5));
  Make(Fields(1970, 1, 1, 3, 0, 0, 5), 1).Convert(&file);
  EXPECT_EQ(TicksOf(file), TicksOfUnix(3 * 3600, 5));
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
    FILETIME back = FILETIME();
    local.Convert(&back);
    EXPECT_EQ(TicksOf(back), TicksOfUnix(c.utcSeconds));
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
    ZnSystemTime time = Make(Fields(2021, month, 15, 10, 20, 30, 400), 0);
    time.wDayOfWeek = 6;
    time.Convert(&calendar);
    EXPECT_EQ(calendar.tm_year, 121);
    EXPECT_EQ(calendar.tm_mon, month - 1);
    EXPECT_EQ(calendar.tm_mday, 15);
    EXPECT_EQ(calendar.tm_hour, 10);
    EXPECT_EQ(calendar.tm_min, 20);
    EXPECT_EQ(calendar.tm_sec, 30);
    EXPECT_EQ(calendar.tm_wday, 6);
    EXPECT_EQ(calendar.tm_yday, 0);
    EXPECT_EQ(calendar.tm_isdst, present.tm_isdst) << "the flag is the present's, not the value's";
  }
}

TEST(ZnSystemTimeTest, BecomesZnTimeThroughMktime) {
  ScopedTimeZone zone(kThreeHoursEast);
  ZnTime const seconds = Make(Fields(1970, 1, 2, 3, 0, 10, 500), 0);
  EXPECT_EQ(seconds, ZnTime(86400 + 10, 0));
}

TEST(ZnSystemTimeTest, ReadsTheWallClockKeepingTheKind) {
  ScopedTimeZone zone(kThreeHoursEast);
  std::int64_t const before = WallSeconds();
  ZnSystemTime utc(1);
  utc.GetSystemTime();
  ZnSystemTime local(1);  // kind 1 converts the fields as UTC
  local.GetLocalTime();
  std::int64_t const after = WallSeconds();
  FILETIME file = FILETIME();
  utc.Convert(&file);
  EXPECT_GE(TicksOf(file), TicksOfUnix(before));
  EXPECT_LT(TicksOf(file), TicksOfUnix(after + 1));
  local.Convert(&file);
  EXPECT_GE(TicksOf(file), TicksOfUnix(before + 3 * 3600));
  EXPECT_LT(TicksOf(file), TicksOfUnix(after + 3 * 3600 + 1));
}

TEST(ZnSystemTimeTest, CopyWithKindTakesTheFields) {
  ScopedTimeZone zone(kThreeHoursEast);
  ZnSystemTime const utc = Make(Fields(2020, 5, 6, 7, 8, 9, 10), 1);
  ZnSystemTime const local(utc, 0);
  ExpectFields(local, Fields(2020, 5, 6, 7, 8, 9, 10), 0);
  FILETIME fromUtc = FILETIME();
  FILETIME fromLocal = FILETIME();
  utc.Convert(&fromUtc);
  local.Convert(&fromLocal);
  EXPECT_EQ(TicksOf(fromUtc) - TicksOf(fromLocal), 3 * 3600 * 10000000ull);
}

}  // namespace
