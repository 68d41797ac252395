// ZnLogger and its frame: the pop-up rule, filters and the refill, the
// clearing of rows, the title hand-over and the notification icon.
#include <znutil/logging/ZnLogger.h>
#include <znutil/logging/ZnLoggerFrame.h>

#include <string>
#include <vector>

#include "LoggerFixture.h"

namespace znutil_test {
namespace {

using Snapshot = ZnLoggerFrame::Snapshot;

// Logs one line and waits until the frame has taken it (the row and the
// pop-up come in the same pass).
Snapshot LogAndWait(int typeAndFlags, std::string const &source, std::string const &text) {
  std::size_t const before = Frame().rows.size();
  ZnLogger::Log(typeAndFlags, ZnString(source.c_str()), ZnString("Cat"), ZnString(text.c_str()));
  EXPECT_TRUE(WaitFor([&] { return Frame().rows.size() > before; })) << text;
  return Frame();
}

std::vector<std::string> Messages(Snapshot const &seen) {
  std::vector<std::string> texts;
  for (auto const &row : seen.rows) texts.push_back(row.fsMessage.Chars());
  return texts;
}

TEST_F(LoggerTest, PopUpRule) {
  struct Case {
    int message;
    int logger;
    bool pops;
  } const cases[] = {
      {ZnLogger::kWarning, 0, true},
      {ZnLogger::kError, 0, true},
      {ZnLogger::kInformation, 0, false},  // always quiet
      {ZnLogger::kInformation | ZnLogger::kLoud, 0, true},
      {ZnLogger::kWarning, ZnLogger::kQuiet, false},
      {ZnLogger::kWarning | ZnLogger::kLoud, ZnLogger::kQuiet, true},
      {ZnLogger::kWarning, ZnLogger::kLoud, true},
      {ZnLogger::kWarning | ZnLogger::kQuiet, ZnLogger::kLoud, false},
      {ZnLogger::kInformation, ZnLogger::kLoud, false},
      {ZnLogger::kWarning | ZnLogger::kQuiet, 0, false},
  };
  ZnLogger::Initialize();
  for (Case const &c : cases) {
    ZnLogger::ClearFlags(ZnLogger::kQuiet | ZnLogger::kLoud);
    ZnLogger::SetFlags(c.logger);
    ZnLogger::ShowLoggerWindow(false);
    int const before = Frame().iActivations;
    Snapshot const seen = LogAndWait(c.message, "Pop", std::to_string(c.message) + "/" + std::to_string(c.logger));
    EXPECT_EQ(c.pops, seen.bVisible) << std::hex << c.message << " " << c.logger;
    EXPECT_EQ(c.pops ? before + 1 : before, seen.iActivations);
  }
}

// A refill shows every stored row in one pass: the frame comes up again,
// once for the whole pass.
TEST_F(LoggerTest, RefilledRowsPopUpOncePerPass) {
  for (char const *source : {"Keep", "Drop", "Keep"}) LogAndWait(ZnLogger::kWarning, source, source);
  ZnLogger::ShowLoggerWindow(false);
  int const before = Frame().iActivations;
  ZnLogger::Filter(ZnLogger::kFilterSource, true, ZnString("keep"));
  ASSERT_TRUE(WaitFor([] { return Frame().rows.size() == 2; }));
  Snapshot const seen = Frame();
  EXPECT_TRUE(seen.bVisible);
  EXPECT_EQ(before + 1, seen.iActivations);
}

TEST_F(LoggerTest, WindowOutputShowAndHide) {
  ZnLogger::Initialize();
  ASSERT_TRUE(WaitFor([] { return ZnLogger::LoggerWindow() != nullptr; }));
  Snapshot first;
  EXPECT_TRUE(ZnLoggerFrame::Capture(&first)) << "there is a frame to capture";
  EXPECT_TRUE(first.bIcon);
  ZnLogger::EnableWindowOutput(false);
  Snapshot const seen = LogAndWait(ZnLogger::kError | ZnLogger::kLoud, "Off", "loud");
  EXPECT_FALSE(seen.bVisible);
  EXPECT_FALSE(seen.bIcon);
  ZnLogger::EnableWindowOutput(true);
  EXPECT_TRUE(Frame().bIcon);
  EXPECT_FALSE(ZnLogger::IsLoggerWindowVisible());
  // Show restores an iconic frame, and hide hides it.
  ZnLogger::ShowLoggerWindow(true);
  EXPECT_TRUE(ZnLoggerFrame::Minimize());
  EXPECT_TRUE(Frame().bIconic);
  ZnLogger::ShowLoggerWindow(true);
  EXPECT_FALSE(Frame().bIconic);
  EXPECT_TRUE(ZnLogger::IsLoggerWindowVisible());
  ZnLogger::ShowLoggerWindow(false);
  EXPECT_FALSE(ZnLogger::IsLoggerWindowVisible());
}

TEST_F(LoggerTest, TitleHandOver) {
  ZnLogger::Initialize();
  ASSERT_TRUE(WaitFor([] { return ZnLogger::LoggerWindow() != nullptr; }));
  ZnLogger::SuggestLogWindowTitle(ZnString("First"));
  ZnLogger::SuggestLogWindowTitle(ZnString("My Application Log"));
  EXPECT_TRUE(WaitFor([] { return std::string(Frame().fsTitle.Chars()) == "My Application Log"; }));
  // A new frame starts with the stored title.
  ZnLogger::Shutdown();
  ZnLogger::Initialize();
  EXPECT_TRUE(WaitFor([] { return std::string(Frame().fsTitle.Chars()) == "My Application Log"; }));
}

TEST_F(LoggerTest, FilterChangeRefillsRowsAndNeverWritesTwice) {
  LogAndWait(ZnLogger::kInformation, "Alpha", "info one");
  LogAndWait(ZnLogger::kWarning, "Beta", "warning two");
  ZnLogger::Filter(ZnLogger::kFilterInformation, false, ZnString("ignored"));
  EXPECT_TRUE(WaitFor([] { return Messages(Frame()) == std::vector<std::string>{"warning two"}; }));
  Snapshot seen = LogAndWait(ZnLogger::kError, "alpha", "error three with Needle");
  EXPECT_EQ((std::vector<std::string>{"warning two", "error three with Needle"}), Messages(seen));

  ZnLogger::Filter(ZnLogger::kFilterInformation, true, ZnString());
  ZnLogger::Filter(ZnLogger::kFilterSource, true, ZnString("ALPHA"));
  EXPECT_TRUE(WaitFor([] { return Messages(Frame()) == std::vector<std::string>{"info one", "error three with Needle"}; }));
  ZnLogger::Filter(ZnLogger::kFilterMessage, true, ZnString("needle"));
  EXPECT_TRUE(WaitFor([] { return Messages(Frame()) == std::vector<std::string>{"error three with Needle"}; }));

  ZnLogger::Filter(ZnLogger::kFilterSource, false, ZnString("ALPHA"));
  ZnLogger::Filter(ZnLogger::kFilterMessage, false, ZnString("needle"));
  EXPECT_TRUE(WaitFor([] { return Frame().rows.size() == 3; }));
  ZnLogger::Shutdown();
  std::string const text = LogText();
  for (char const *line : {"\tinfo one\n", "\twarning two\n", "\terror three with Needle\n"}) {
    EXPECT_EQ(1, Count(text, line)) << line;
  }
}

TEST_F(LoggerTest, FilterOutsideTheSixIsIgnored) {
  ZnLogger::Filter(ZnLogger::kFilterCount, true, ZnString("x"));
  ZnLogger::Filter(-1, true, ZnString("x"));
  for (int index = 0; index < ZnLogger::kFilterCount; ++index) {
    ZnLogger::LoggerFilter const *filter = ZnLogger::QueryFilter(index);
    EXPECT_EQ(index, filter->iFilterType);
    EXPECT_EQ(index <= ZnLogger::kFilterError, filter->bEnabled);
    EXPECT_STREQ("", filter->fsText.Chars());
  }
}

TEST_F(LoggerTest, ClearWindowEmptiesRowsButKeepsRecordsAndFile) {
  LogAndWait(ZnLogger::kWarning, "Keep", "kept one");
  LogAndWait(ZnLogger::kWarning, "Keep", "kept two");
  ZnLogger::ClearWindow();
  EXPECT_TRUE(WaitFor([] { return Frame().rows.empty(); }));
  // The stored records come back with the next refill.
  ZnLogger::Filter(ZnLogger::kFilterError, false, ZnString());
  EXPECT_TRUE(WaitFor([] { return Frame().rows.size() == 2; }));
  ZnLogger::Shutdown();
  EXPECT_EQ(2, Count(LogText(), "  Warning  Keep  Cat\n"));
}

}  // namespace
}  // namespace znutil_test
