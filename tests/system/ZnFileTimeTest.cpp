#include <znutil/system/ZnFileTime.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "ScratchDirectory.h"
#include "TestClocks.h"

namespace {

using znutil_test::Backslashed;
using znutil_test::FileTimeOf;
using znutil_test::Fields;
using znutil_test::ScopedTimeZone;
using znutil_test::ScratchDirectory;
using znutil_test::TicksOf;
using znutil_test::WriteFile;

std::int64_t const kSecondsFrom1601To1970 = 11644473600;

// The FILETIME of a UTC date by the C library's own calendar.
std::uint64_t ExpectedTicks(SYSTEMTIME const &fields) {
  std::tm calendar = std::tm();
  calendar.tm_year = fields.wYear - 1900;
  calendar.tm_mon = fields.wMonth - 1;
  calendar.tm_mday = fields.wDay;
  calendar.tm_hour = fields.wHour;
  calendar.tm_min = fields.wMinute;
  calendar.tm_sec = fields.wSecond;
  std::int64_t const seconds = timegm(&calendar) + kSecondsFrom1601To1970;
  return static_cast<std::uint64_t>(seconds) * 10000000u + fields.wMilliseconds * 10000u;
}

TEST(ZnFileTimeTest, SystemTimesConvertByTheCalendar) {
  struct Case {
    SYSTEMTIME fields;
    WORD dayOfWeek;
  } const cases[] = {
      {Fields(1601, 1, 1, 0, 0, 0, 0), 1},
      {Fields(1970, 1, 1, 0, 0, 0, 0), 4},
      {Fields(2000, 2, 29, 12, 34, 56, 789), 2},
      {Fields(2100, 3, 1, 23, 59, 59, 999), 1},
      {Fields(2024, 12, 31, 6, 0, 0, 1), 2},
      {Fields(30827, 12, 31, 23, 59, 59, 999), 5},
  };
  for (Case const &c : cases) {
    ZnFileTime const file(c.fields, 0);
    EXPECT_EQ(TicksOf(file), ExpectedTicks(c.fields)) << c.fields.wYear;
    SYSTEMTIME back = SYSTEMTIME();
    file.Convert(&back);
    EXPECT_EQ(back.wYear, c.fields.wYear);
    EXPECT_EQ(back.wMonth, c.fields.wMonth);
    EXPECT_EQ(back.wDay, c.fields.wDay);
    EXPECT_EQ(back.wHour, c.fields.wHour);
    EXPECT_EQ(back.wMinute, c.fields.wMinute);
    EXPECT_EQ(back.wSecond, c.fields.wSecond);
    EXPECT_EQ(back.wMilliseconds, c.fields.wMilliseconds);
    EXPECT_EQ(back.wDayOfWeek, c.dayOfWeek) << c.fields.wYear;
  }
}

TEST(ZnFileTimeTest, InvalidSystemTimesLeaveTheValue) {
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
}

TEST(ZnFileTimeTest, ComparesAsSixtyFourBitValues) {
  ZnFileTime const low(FileTimeOf(0xFFFFFFFFull), 0);
  ZnFileTime const high(FileTimeOf(0x100000000ull), 0);
  EXPECT_TRUE(low < high);
  EXPECT_TRUE(low <= high);
  EXPECT_TRUE(high > low);
  EXPECT_TRUE(high >= low);
  EXPECT_TRUE(low != high);
  EXPECT_FALSE(low == high);
  EXPECT_TRUE(low == FileTimeOf(0xFFFFFFFFull));
  EXPECT_TRUE(low <= FileTimeOf(0xFFFFFFFFull) && low >= FileTimeOf(0xFFFFFFFFull));
  EXPECT_FALSE(high < low || high <= low || low > high || low >= high);
  EXPECT_TRUE(ZnFileTime(0) == FileTimeOf(0));
}

TEST(ZnFileTimeTest, KindOneShowsLocalTimeAndAssignmentKeepsTheKind) {
  ScopedTimeZone zone("XYZ-3");
  FILETIME const noonUtc = FileTimeOf(ExpectedTicks(Fields(2022, 6, 1, 12, 0, 0, 0)));
  ZnFileTime shownLocal(noonUtc, 1);
  ZnFileTime const asItStands(noonUtc, 0);
  SYSTEMTIME fields = SYSTEMTIME();
  shownLocal.Convert(&fields);
  EXPECT_EQ(fields.wHour, 15);
  asItStands.Convert(&fields);
  EXPECT_EQ(fields.wHour, 12);
  shownLocal = asItStands;
  shownLocal.Convert(&fields);
  EXPECT_EQ(fields.wHour, 15);
  ZnFileTime const copiedWithKind(shownLocal, 2);
  copiedWithKind.Convert(&fields);
  EXPECT_EQ(fields.wHour, 12);
  ZnFileTime const plainCopy(shownLocal);
  plainCopy.Convert(&fields);
  EXPECT_EQ(fields.wHour, 15);
}

TEST(ZnFileTimeTest, ConvertLeavesTheOutputOnFailure) {
  SYSTEMTIME fields = Fields(1999, 9, 9, 9, 9, 9, 9);
  ZnFileTime(FileTimeOf(0x8000000000000000ull), 0).Convert(&fields);
  EXPECT_EQ(fields.wYear, 1999);
  EXPECT_EQ(fields.wSecond, 9);
}

TEST(ZnFileTimeTest, SetFromFileTakesTheWriteTimeAtFullResolution) {
  ScratchDirectory scratch;
  std::string const path = WriteFile(scratch.Path() + "/stamped.txt");
  timespec const times[2] = {{1000000000, 0}, {1000000000, 123456789}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  ZnFileTime written(1);
  ASSERT_TRUE(written.SetFromFile(Backslashed(path).c_str()));
  EXPECT_EQ(TicksOf(written), static_cast<std::uint64_t>(1000000000 + kSecondsFrom1601To1970) * 10000000u + 1234567u);
}

TEST(ZnFileTimeTest, SetFromFileFailsForWhatCannotBeOpenedAsAFile) {
  ScratchDirectory scratch;
  ZnFileTime kept(FileTimeOf(99), 0);
  EXPECT_FALSE(kept.SetFromFile((scratch.Path() + "/missing.txt").c_str()));
  EXPECT_FALSE(kept.SetFromFile(scratch.Path().c_str()));
  EXPECT_EQ(TicksOf(kept), 99u);
}

TEST(ZnFileTimeTest, WallClockIsLaterThanAFileJustWritten) {
  ScratchDirectory scratch;
  std::string const path = WriteFile(scratch.Path() + "/fresh.txt");
  ZnFileTime const now(znutil::platform::SystemTimeAsFileTime(), 0);
  ZnFileTime written(0);
  ASSERT_TRUE(written.SetFromFile(path.c_str()));
  EXPECT_GT(now, written);
}

}  // namespace
