#include <znutil/text/ZnString.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/text/ZnStringTokenizerCallBack.h>

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
  std::string const big(5000, 'b');
  EXPECT_EQ(text.Format("<%s>", big.c_str()), 5002);
  EXPECT_EQ(text.Length(), 5002);
  EXPECT_EQ(text[5001], '>');
}

TEST(ZnStringFormatTest, FormatIntGroupsDigits) {
  struct Case {
    long value;
    int width;
    char const *text;
  } const cases[] = {
      {1234567, 0, "1,234,567"}, {-1000, 8, "  -1,000"}, {0, 0, " "},     {0, 3, "    "},
      {999, 0, "999"},           {1000, 0, "1,000"},      {1001, 6, " 1,001"}, {-5, 0, "-5"},
      {1000000, 0, "1,000,000"},
  };
  for (auto const &c : cases) {
    ZnString text("old");
    text.FormatInt(c.value, c.width);
    EXPECT_EQ(text, c.text) << c.value << " in " << c.width;
  }
}

TEST(ZnStringFormatTest, ExpandTabsReachesTheNextStop) {
  ZnString text("a\tbc\td\n\te");
  text.ExpandTabs(4);
  EXPECT_EQ(text, "a   bc  d\n  e") << "a newline is an ordinary column";
  ZnString many("\t\t\t\t\t");
  many.ExpandTabs(8);
  EXPECT_EQ(many.Length(), 40);
  ZnString shared("\tx");
  ZnString copy(shared);
  copy.ExpandTabs(2);
  EXPECT_EQ(copy, "  x");
  EXPECT_EQ(shared, "\tx");
}

TEST(ZnStringFormatTest, TokenizeKeepsEmptyTokens) {
  EXPECT_EQ(Tokens("a,,b,", ","), (std::vector<std::string>{"a", "", "b", ""}));
  EXPECT_EQ(Tokens("one", ","), (std::vector<std::string>{"one"}));
  EXPECT_TRUE(Tokens("", ",").empty()) << "an empty text calls nothing";
  EXPECT_EQ(Tokens("a b;c", " ;"), (std::vector<std::string>{"a", "b", "c"}));
}

TEST(ZnStringFormatTest, TokenizeCallbackSteersTheScan) {
  EXPECT_EQ(Tokens("x,switch,a,b;c", ","), (std::vector<std::string>{"x", "switch", "a,b", "c"}));
  EXPECT_EQ(Tokens("a,stop,b", ","), (std::vector<std::string>{"a", "stop"}));
  ZnString text("p,q");
  ZnStringTokenizerCallBack base;
  text.Tokenize(ZnString(","), base);
  EXPECT_EQ(text, "p,q") << "tokenizing leaves the text alone";
}

}  // namespace
