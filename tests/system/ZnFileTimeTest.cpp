#include <znutil/system/ZnFileTime.h>

#include <cstdint>
#include <ctime>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "ScratchDirectory.h"
#include "TestClocks.h"

namespace {

using namespace znutil_test;

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
  SYSTEMTIME const cases[] = {
      Fields(1601, 1, 1, 0, 0, 0, 0, 1),          Fields(1970, 1, 1, 0, 0, 0, 0, 4),
      Fields(2000, 2, 29, 12, 34, 56, 789, 2),    Fields(2100, 3, 1, 23, 59, 59, 999, 1),
      Fields(30827, 12, 31, 23, 59, 59, 999, 5),
  };
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
      Fields(2000, 1, 1, 0, 0, 60, 0),  Fields(2000, 1, 1, 0, 0, 0, 1000),
  };
  for (SYSTEMTIME const &fields : invalid) {
    EXPECT_EQ(TicksOf(ZnFileTime(fields, 0)), 0u) << fields.wYear << "-" << fields.wMonth << "-" << fields.wDay;
    ZnFileTime kept(FileTimeOf(77), 0);
    kept = fields;
    EXPECT_EQ(TicksOf(kept), 77u);
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
  ScopedTimeZone zone("XYZ-3");
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
