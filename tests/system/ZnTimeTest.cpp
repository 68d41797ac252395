// The time values: ZnTime with its carry rules, the calendar fields of ZnSystemTime, and ZnFileTime, with the
// time zone pinned by a POSIX rule.
#include <znutil/system/ZnFileTime.h>
#include <znutil/system/ZnSystemTime.h>
#include <znutil/system/ZnTime.h>

#include <array>
#include <cstdint>
#include <ctime>
#include <sstream>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "ScratchDirectory.h"
#include "TestClocks.h"

namespace {

using namespace znutil_test;

char const kThreeHoursEast[] = "XYZ-3";
// Central Europe: UTC+1, and UTC+2 from the last Sunday of March to the last Sunday of October.
char const kCentralEurope[] = "CET-1CEST,M3.5.0,M10.5.0/3";

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
  std::int64_t const before = WallSeconds();
  ZnTime now, later(0);
  later.Update();
  std::int64_t const after = WallSeconds();
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
  EXPECT_EQ(total += ZnTime(0, 999), ZnTime(1, 998));
  EXPECT_EQ((ZnTime(INT32_MAX, 600) + ZnTime(0, 400)).Seconds(), INT32_MIN);  // 32-bit seconds wrap

  EXPECT_EQ(ZnTime(2, 100) - ZnTime(1, 900), ZnTime(0, 200));
  EXPECT_EQ(ZnTime(1, 0) - ZnTime(2, 0), ZnTime(1, 0));
  EXPECT_EQ(ZnTime(5, 250) - ZnTime(5, 250), ZnTime(0, 0));
  // Earlier minus later: seconds right in size, milliseconds not mirrored.
  EXPECT_EQ(ZnTime(1, 900) - ZnTime(2, 100), ZnTime(1, 800));
  ZnTime span(10, 0);
  EXPECT_EQ(span -= ZnTime(3, 1), ZnTime(6, 999));
}

TEST(ZnTimeTest, BreaksDownInLocalTimeAndUtc) {
  ScopedTimeZone zone(kThreeHoursEast);  // three hours east of UTC
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
  // Back through mktime: local, no milliseconds.
  EXPECT_EQ(static_cast<ZnTime>(Make(Fields(1970, 1, 2, 3, 1, 1, 500), 1)), ZnTime(86400 + 61, 0));
}

TEST(ZnSystemTimeTest, TakesFileTimeInLocalTimeForKindZeroOnly) {
  ScopedTimeZone zone(kThreeHoursEast);
  FILETIME const file = FileTimeOf(TicksOfUnix(61, 234567800));  // sub-millisecond ticks are cut
  EXPECT_EQ(FieldsOf(ZnSystemTime(file, 0)), FieldsOf(Fields(1970, 1, 1, 3, 1, 1, 234, 4)));
  EXPECT_EQ(FieldsOf(ZnSystemTime(file, 2)), FieldsOf(Fields(1970, 1, 1, 0, 1, 1, 234, 4)));
  ZnSystemTime kept = Make(Fields(2000, 1, 1, 0, 0, 0, 0), 1);
  EXPECT_EQ(FieldsOf(kept = FileTimeOf(0x8000000000000000ull)), FieldsOf(Fields(2000, 1, 1, 0, 0, 0, 0)));  // too far
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
  // Noon UTC on 2021-07-01, summer time, and on 2021-01-01, winter time.
  for (auto const &[utcSeconds, localHour] : {std::pair<std::int64_t, WORD>{1625140800, 14}, {1609502400, 13}}) {
    ZnSystemTime const local(FileTimeOf(TicksOfUnix(utcSeconds)), 0);
    EXPECT_EQ(local.wHour, localHour);
    EXPECT_EQ(UtcTicks(local), TicksOfUnix(utcSeconds));
  }
}

TEST(ZnSystemTimeTest, ConvertsToTmWithTodaysDaylightSavingFlag) {
  ScopedTimeZone zone(kCentralEurope);
  std::time_t const now = std::time(nullptr);
  std::tm const present = *std::localtime(&now);
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

// The FILETIME of a UTC date by the C library's own calendar.
std::uint64_t ExpectedTicks(SYSTEMTIME const &fields) {
  std::tm calendar = std::tm();
  calendar.tm_year = fields.wYear - 1900;
  calendar.tm_mon = fields.wMonth - 1;
  calendar.tm_mday = fields.wDay;
  calendar.tm_hour = fields.wHour;
  calendar.tm_min = fields.wMinute;
  calendar.tm_sec = fields.wSecond;
  return TicksOfUnix(timegm(&calendar), fields.wMilliseconds * std::int64_t{1000000});
}

WORD ShownHour(ZnFileTime const &time) {
  SYSTEMTIME fields = SYSTEMTIME();
  time.Convert(&fields);
  return fields.wHour;
}

TEST(ZnFileTimeTest, SystemTimesConvertByTheCalendar) {
  SYSTEMTIME const cases[] = {Fields(1601, 1, 1, 0, 0, 0, 0, 1),        Fields(1970, 1, 1, 0, 0, 0, 0, 4),
                               Fields(2000, 2, 29, 12, 34, 56, 789, 2),  Fields(2100, 3, 1, 23, 59, 59, 999, 1),
                               Fields(30827, 12, 31, 23, 59, 59, 999, 5)};
  for (SYSTEMTIME const &fields : cases) {
    ZnFileTime const file(fields, 0);
    EXPECT_EQ(TicksOf(file), ExpectedTicks(fields)) << fields.wYear;
    SYSTEMTIME back = SYSTEMTIME();
    file.Convert(&back);
    EXPECT_EQ(FieldsOf(back), FieldsOf(fields));
  }
}

TEST(ZnFileTimeTest, InvalidValuesLeaveTheOutput) {
  SYSTEMTIME const invalid[] = {
      Fields(1600, 12, 31, 0, 0, 0, 0), Fields(30828, 1, 1, 0, 0, 0, 0), Fields(2000, 0, 1, 0, 0, 0, 0),
      Fields(2000, 13, 1, 0, 0, 0, 0),  Fields(2000, 2, 30, 0, 0, 0, 0),  Fields(2100, 2, 29, 0, 0, 0, 0),
      Fields(2000, 1, 0, 0, 0, 0, 0),   Fields(2000, 1, 1, 24, 0, 0, 0),  Fields(2000, 1, 1, 0, 60, 0, 0),
      Fields(2000, 1, 1, 0, 0, 60, 0),  Fields(2000, 1, 1, 0, 0, 0, 1000)};
  for (SYSTEMTIME const &fields : invalid) {
    EXPECT_EQ(TicksOf(ZnFileTime(fields, 0)), 0u) << fields.wYear << "-" << fields.wMonth << "-" << fields.wDay;
    ZnFileTime kept(FileTimeOf(77), 0);
    EXPECT_EQ(TicksOf(kept = fields), 77u);
  }
  SYSTEMTIME fields = Fields(1999, 9, 9, 9, 9, 9, 9);
  ZnFileTime(FileTimeOf(0x8000000000000000ull), 0).Convert(&fields);
  EXPECT_EQ(FieldsOf(fields), FieldsOf(Fields(1999, 9, 9, 9, 9, 9, 9)));
}

TEST(ZnFileTimeTest, ComparesAsSixtyFourBitValues) {
  ZnFileTime const low(FileTimeOf(0xFFFFFFFFull), 0), high(FileTimeOf(0x100000000ull), 0);
  EXPECT_TRUE(low < high && low <= high && high > low && high >= low && low != high);
  EXPECT_FALSE(low == high || high < low || high <= low || low > high || low >= high);
  FILETIME const same = FileTimeOf(0xFFFFFFFFull);
  EXPECT_TRUE(low == same && low <= same && low >= same);
  EXPECT_FALSE(low != same || low < same || low > same);
  EXPECT_TRUE(ZnFileTime(0) == FileTimeOf(0));
}

TEST(ZnFileTimeTest, KindOneShowsLocalTimeAndAssignmentKeepsTheKind) {
  ScopedTimeZone zone(kThreeHoursEast);
  FILETIME const noonUtc = FileTimeOf(ExpectedTicks(Fields(2022, 6, 1, 12, 0, 0, 0)));
  ZnFileTime shownLocal(noonUtc, 1);
  ZnFileTime const asItStands(noonUtc, 0);
  EXPECT_EQ(ShownHour(shownLocal), 15);
  EXPECT_EQ(ShownHour(asItStands), 12);
  shownLocal = asItStands;
  EXPECT_EQ(ShownHour(shownLocal), 15);
  EXPECT_EQ(ShownHour(ZnFileTime(shownLocal, 2)), 12);
  EXPECT_EQ(ShownHour(ZnFileTime(shownLocal)), 15);
  // The largest FILETIME still shows where the zone moves it by nothing.
  ScopedTimeZone utc("UTC0");
  SYSTEMTIME last = SYSTEMTIME();
  ZnFileTime(FileTimeOf(0x7FFFFFFFFFFFFFFFull), 1).Convert(&last);
  EXPECT_EQ(last.wYear, 30828);
}

TEST(ZnFileTimeTest, SetFromFileTakesTheWriteTimeAtFullResolution) {
  ScratchDirectory scratch;
  std::string const path = WriteFile(scratch / "stamped.txt");
  ZnFileTime const now(znutil::platform::SystemTimeAsFileTime(), 0);
  ZnFileTime written(1);
  ASSERT_TRUE(written.SetFromFile(path.c_str()));
  EXPECT_GT(now, written);  // a change time at full resolution

  timespec const times[2] = {{1000000000, 0}, {1000000000, 123456789}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  ASSERT_TRUE(written.SetFromFile(Backslashed(path).c_str()));
  EXPECT_EQ(TicksOf(written), TicksOfUnix(1000000000, 123456789));

  ZnFileTime kept(FileTimeOf(99), 0);
  EXPECT_FALSE(kept.SetFromFile((scratch / "missing.txt").c_str()));
  EXPECT_FALSE(kept.SetFromFile(scratch.Path().c_str()));
  EXPECT_EQ(TicksOf(kept), 99u);
}

}  // namespace
