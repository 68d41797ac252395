// ZnLogger: the path of a message, the record text, types and flags.
#include <znutil/logging/ZnLogger.h>

#include <string>

#include <znutil/system/ZnSystemTime.h>

#include "LoggerFixture.h"

namespace znutil_test {
namespace {

std::string StampNow() {
  ZnSystemTime now(0);
  now.GetLocalTime();
  ZnString text;
  text.FormatTime("%#m/%#d/%y %#I:%M:%S %p", now);
  return text.Chars();
}

TEST_F(LoggerTest, RecordTextIsExactAndEachFormGivesItsLines) {
  ZnString const first("first line"), second("second line");
  std::string const before = StampNow();
  ZnLogger::Log(ZnLogger::kWarning, ZnString("Parser"), ZnString("Syntax"), &first, &second, nullptr);
  std::string const after = StampNow();
  ZnStringList lines;
  lines.Add(ZnString("a"));
  lines.Add(ZnString("b"));
  ZnLogger::Log(ZnLogger::kError, ZnString("S"), ZnString("C"), lines);
  ZnLogger::Log(7, ZnString("S"), ZnString("C"), ZnString("one"));
  ZnLogger::Log(ZnLogger::kInformation | ZnLogger::kLoud, ZnString("S"), ZnString("C"), nullptr);
  // The frame's row holds the lines joined by one blank.
  EXPECT_TRUE(WaitFor([] {
    auto const rows = Frame().rows;
    return !rows.empty() && std::string(rows.front().fsMessage.Chars()) == "first line second line";
  }));
  ZnLogger::Shutdown();
  std::string const rest = "  Warning  Parser  Syntax\n\tfirst line\n\tsecond line\n\n";
  std::string const text = LogText();
  EXPECT_TRUE(text.rfind(before + rest, 0) == 0 || text.rfind(after + rest, 0) == 0) << text;
  EXPECT_EQ(1, Count(text, "  Error  S  C\n\ta\n\tb\n\n"));
  EXPECT_EQ(1, Count(text, "  Unknown  S  C\n\tone\n\n"));
  EXPECT_EQ(1, Count(text, "  Information  S  C\n\n"));
}

// The writer formats the time once a second: a record of a later second
// still carries its own time.
TEST_F(LoggerTest, EachSecondIsStampedAfresh) {
  ZnLogger::Log(ZnLogger::kWarning, ZnString("S"), ZnString("C"), ZnString("A"));
  ASSERT_TRUE(WaitForInFile("\tA\n"));
  std::string const first = LogText();
  std::string const stamp = first.substr(0, first.find("  Warning"));
  ASSERT_TRUE(WaitFor([&] { return StampNow() != stamp; }));
  std::string const before = StampNow();
  ZnLogger::Log(ZnLogger::kWarning, ZnString("S"), ZnString("C"), ZnString("B"));
  std::string const after = StampNow();
  ZnLogger::Shutdown();
  std::string const second = LogText().substr(first.size());
  std::string const rest = "  Warning  S  C\n\tB\n\n";
  EXPECT_TRUE(second == before + rest || second == after + rest) << second;
}

// A debug dump of a message that nothing in the library prints.
TEST(LoggerTypesTest, ConsoleTextOfAMessage) {
  std::string const before = StampNow();
  ZnLogger::ZnLogMessage message(ZnLogger::kError, ZnString("Src"), ZnString("Cat"));
  std::string const after = StampNow();
  message.AddLine(ZnString("one"));
  message.AddLine(ZnString("two"));
  std::string const rest = "\n\tSource:   Src\n\tCategory: Cat\n\t\tone\n\t\ttwo\n";
  std::string const text = message.ConsoleText().Chars();
  EXPECT_TRUE(text == before + rest || text == after + rest) << text;
}

TEST(LoggerTypesTest, TypeWordsAndFlags) {
  struct Case {
    int type;
    char const *word;
  } const cases[] = {{0, "Information"}, {1, "Warning"}, {2, "Error"}, {3, "Unknown"}, {-1, "Unknown"}, {0x10001, "Unknown"}};
  for (Case const &c : cases) EXPECT_STREQ(c.word, ZnLogger::TypeToString(c.type).Chars()) << c.type;
  // Flags keep their high bits only.
  ZnLogger::SetFlags(0xFFFF);
  EXPECT_EQ(0, ZnLogger::GetFlags());
  ZnLogger::SetFlags(ZnLogger::kLoud | 0x1234);
  EXPECT_EQ(ZnLogger::kLoud, ZnLogger::GetFlags());
  ZnLogger::ClearFlags(ZnLogger::kLoud | ZnLogger::kQuiet | 0xFF);
  EXPECT_EQ(0, ZnLogger::GetFlags());
}

TEST_F(LoggerTest, StartStopStartInOneProcess) {
  for (int run = 0; run < 3; ++run) {
    ZnLogger::Log(ZnLogger::kWarning, ZnString("Run"), ZnString("Cycle"), ZnString(std::to_string(run).c_str()));
    EXPECT_TRUE(ZnLogger::IsInitialized());
    ASSERT_TRUE(WaitForInFile("\t" + std::to_string(run) + "\n"));
    ZnLogger::Shutdown();
    EXPECT_FALSE(ZnLogger::IsInitialized());
    EXPECT_EQ(nullptr, ZnLogger::LoggerWindow());
  }
  EXPECT_EQ(3, Count(LogText(), "  Warning  Run  Cycle\n"));
}

}  // namespace
}  // namespace znutil_test
