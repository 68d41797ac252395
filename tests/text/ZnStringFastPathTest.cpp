// Paths that skip work where the text allows it, against the plain C rules.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/text/ZnString.h>
#include <znutil/text/ZnStringTokenizerCallBack.h>

namespace {

// Notes each token with its max length, keeps a share of every second one
// and empties the delimiter set at "last".
struct Keeper : ZnStringTokenizerCallBack {
  bool StringTokenizerCallBack(ZnString const &token, ZnString &delimiters) override {
    seen.push_back(std::string(token.Chars()) + "/" + std::to_string(token.MaxLength() - token.Length()));
    if (seen.size() % 2 == 0) kept.push_back(token);
    if (token == "last") delimiters = "";
    return true;
  }
  std::vector<std::string> seen;
  std::vector<ZnString> kept;
};

TEST(ZnStringFastPathTest, TokensAreFreshValuesWhetherKeptOrNot) {
  ZnString text("a,bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb,,cc;d,last,e,f");
  Keeper keeper;
  text.Tokenize(ZnString(",;"), keeper);
  std::string const longToken(40, 'b');
  EXPECT_EQ(keeper.seen, (std::vector<std::string>{"a/32", longToken + "/32", "/32", "cc/32", "d/32", "last/32",
                                                  "e,f/32"}));
  EXPECT_EQ(keeper.kept, (std::vector<ZnString>{ZnString(longToken.c_str()), ZnString("cc"), ZnString("last")}));
}

TEST(ZnStringFastPathTest, TokenizeStopsAtAnEmbeddedNul) {
  ZnString text("a,b,c,d");
  text.SetCharacter(3, '\0');
  Keeper keeper;
  text.Tokenize(ZnString(","), keeper);
  EXPECT_EQ(keeper.seen, (std::vector<std::string>{"a/32", "b/32"}));
}

ZnString WithNul(char const *text, int at) {
  ZnString result(text);
  result.SetCharacter(at, '\0');
  return result;
}

TEST(ZnStringFastPathTest, SearchFollowsTheCRulesWhereverANulHides) {
  ZnString appended("ab");
  appended << '\0' << "needle";
  ZnString copied(WithNul("xy needle", 1));
  copied << "!";  // a private copy keeps what its source was
  ZnString const nulOnly(WithNul("x", 0));
  ZnString copiedNul(nulOnly);
  copiedNul << "needle";  // as does the copy of a one-byte text
  ZnString truncated(WithNul("needle xy", 7));
  truncated.Truncate(8);  // measured again: "needle "
  struct Case {
    ZnString text;
    ZnString sub;
    int start;
    int found;
  } const cases[] = {
      {ZnString("abc needle"), ZnString("needle"), 0, 4},
      {ZnString("needle needle"), ZnString("needle"), 1, 7},
      {ZnString("abc needl"), ZnString("needle"), 0, -1},
      {WithNul("abc needle", 1), ZnString("needle"), 0, -1},
      {WithNul("abc needle", 1), ZnString("needle"), 2, 4},
      {appended, ZnString("needle"), 0, -1},
      {copied, ZnString("needle"), 0, -1},
      {copiedNul, ZnString("needle"), 0, -1},
      {ZnString("abc needle").LeftString(9), ZnString("needl"), 0, 4},
      {WithNul("abc needle", 2).LeftString(9), ZnString("needl"), 0, -1},
      {truncated, ZnString("needle"), 0, 0},
      {ZnString("abc"), WithNul("xy", 0), 0, 3},
      {ZnString("abc xy"), WithNul("xy", 1), 0, 4},
  };
  for (Case const &c : cases)
    EXPECT_EQ(c.text.ContainsSubString(c.sub, c.start), c.found) << c.text.Chars() << " / " << c.sub.Chars();
}

}  // namespace
