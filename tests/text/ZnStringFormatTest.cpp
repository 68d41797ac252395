#include <znutil/text/ZnString.h>

#include <string>
#include <vector>

#include <clocale>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include <znutil/system/ZnSystemTime.h>
#include <znutil/system/ZnTime.h>
#include <znutil/text/ZnStringTokenizerCallBack.h>

#include "../system/ScratchDirectory.h"

namespace {

struct Collector : ZnStringTokenizerCallBack {
  bool StringTokenizerCallBack(ZnString const &token, ZnString &delimiters) override {
    tokens.push_back(static_cast<char const *>(token));
    if (token == "switch") delimiters = ";";
    return token != "stop";
  }
  std::vector<std::string> tokens;
};

std::vector<std::string> Tokens(char const *text, char const *delimiters) {
  Collector collector;
  ZnString(text).Tokenize(ZnString(delimiters), collector);
  return collector.tokens;
}

TEST(ZnStringFormatTest, FormatHasNoLengthLimit) {
  ZnString text;
  EXPECT_EQ(text.Format("%d-%s", 42, "x"), 4);
  EXPECT_EQ(text, "42-x");
  EXPECT_EQ(text.Format("<%s>", std::string(5000, 'b').c_str()), 5002);
  EXPECT_EQ(text[5001], '>');
}

TEST(ZnStringFormatTest, FormatTimeMapsTheHashFlag) {
  setenv("TZ", "UTC0", 1);
  tzset();
  ZnString text;
  ZnTime const stamp(365L * 86400 + 5 * 3600 + 7 * 60, 0);  // 1971-01-01 05:07:00
  EXPECT_EQ(text.FormatTime("%Y-%m-%d %H:%M", stamp), 16);
  EXPECT_EQ(text, "1971-01-01 05:07");
  text.FormatTime("%#m/%#d %#H%%", stamp);
  EXPECT_EQ(text, "1/1 5%") << "no leading zeros with #";
  std::tm calendar{};
  calendar.tm_year = 99, calendar.tm_mon = 11, calendar.tm_mday = 31, calendar.tm_hour = 23;
  ZnSystemTime const system(calendar, 0);
  text.FormatTime("%d.%m.%Y %H", system);
  EXPECT_EQ(text, "31.12.1999 23");
  EXPECT_EQ(text.FormatTime(std::string(600, 'x').c_str(), system), 0) << "too long for the buffer";
  EXPECT_TRUE(text == NULL_STRING);
  unsetenv("TZ");
  tzset();
}

TEST(ZnStringFormatTest, FormatIntGroupsDigits) {
  struct Case {
    long value;
    int width;
    char const *text;
  } const cases[] = {{1234567, 0, "1,234,567"}, {-1000, 8, "  -1,000"}, {0, 0, " "},     {0, 3, "    "},
                     {999, 0, "999"},           {1000, 0, "1,000"},      {1001, 6, " 1,001"}, {-5, 0, "-5"}};
  for (auto const &c : cases) {
    ZnString text("old");
    text.FormatInt(c.value, c.width);
    EXPECT_EQ(text, c.text) << c.value << " in " << c.width;
  }
}

// Makes the locale "dots" (groups of 3 with ".") in `folder` and points the
// C library there; false if no locale compiler is at hand.
bool MakeDottedLocale(std::string const &folder) {
  std::ofstream(folder + "/dots.src") << "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\n"
                                         "END LC_NUMERIC\n";
  std::string const command = "localedef -c -i '" + folder + "/dots.src' -f ANSI_X3.4-1968 '" + folder +
                              "/dots' >/dev/null 2>&1";
  std::system(command.c_str());
  setenv("LOCPATH", folder.c_str(), 1);
  return std::setlocale(LC_ALL, "dots") != nullptr && std::string(std::localeconv()->thousands_sep) == ".";
}

// In a new process: the first call leaves the host's dotted locale for "C".
bool FirstFormatIntLeavesTheHostLocale() {
  ZnString text;
  text.FormatInt(1234567, 0);
  return text == "1,234,567" && std::string(std::setlocale(LC_ALL, nullptr)) == "C";
}

TEST(ZnStringFormatTest, FormatIntGroupsByThreeWithCommasInAnyLocale) {
  znutil_test::ScratchDirectory folder;
  if (!MakeDottedLocale(folder.Path())) GTEST_SKIP() << "no localedef to make a locale with other groups";
  std::string const style = GTEST_FLAG_GET(death_test_style);
  GTEST_FLAG_SET(death_test_style, "threadsafe");  // a fresh process, where no call came first
  EXPECT_EXIT(
      {
        bool const ok = FirstFormatIntLeavesTheHostLocale();
        std::filesystem::remove_all(folder.Path());  // the new process made a folder of its own
        std::_Exit(ok ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  GTEST_FLAG_SET(death_test_style, style);
  ZnString text;
  text.FormatInt(1, 0);            // the first call here, if none came before
  std::setlocale(LC_ALL, "dots");  // then the host sets its locale again
  text.FormatInt(1234567, 0);
  EXPECT_EQ(text, "1,234,567");
  std::setlocale(LC_ALL, "C");
  unsetenv("LOCPATH");
}

TEST(ZnStringFormatTest, ExpandTabsReachesTheNextStop) {
  ZnString text("a\tbc\td\n\te"), shared("\tx"), copy(shared);
  text.ExpandTabs(4);
  EXPECT_EQ(text, "a   bc  d\n  e") << "a newline is an ordinary column";
  copy.ExpandTabs(2);
  EXPECT_EQ(copy, "  x");
  EXPECT_EQ(copy.MaxLength(), 2 - 1 + 2 + 32) << "room for tab size - tabs + length, as the program reckons it";
  EXPECT_EQ(shared, "\tx");
}

TEST(ZnStringFormatTest, TokenizeKeepsEmptyTokensAndTheCallbackSteersTheScan) {
  using Texts = std::vector<std::string>;
  EXPECT_EQ(Tokens("a,,b,", ","), (Texts{"a", "", "b", ""}));
  EXPECT_TRUE(Tokens("", ",").empty()) << "an empty text calls nothing";
  EXPECT_EQ(Tokens("a b;c", " ;"), (Texts{"a", "b", "c"}));
  EXPECT_EQ(Tokens("x,switch,a,b;c", ","), (Texts{"x", "switch", "a,b", "c"}));
  EXPECT_EQ(Tokens("a,stop,b", ","), (Texts{"a", "stop"}));
  ZnString text("p,q");
  ZnStringTokenizerCallBack base;
  text.Tokenize(ZnString(","), base);
  EXPECT_EQ(text, "p,q") << "tokenizing leaves the text alone";
}

}  // namespace
