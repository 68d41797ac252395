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
  ASSERT_EQ(keeper.kept.size(), 3u);
  EXPECT_EQ(keeper.kept[0], longToken.c_str());
  EXPECT_EQ(keeper.kept[1], "cc");
  EXPECT_EQ(keeper.kept[2], "last");
}

TEST(ZnStringFastPathTest, TokenizeStopsAtAnEmbeddedNul) {
  ZnString text("a,b,c,d");
  text.SetCharacter(3, '\0');
  Keeper keeper;
  text.Tokenize(ZnString(","), keeper);
  EXPECT_EQ(keeper.seen, (std::vector<std::string>{"a/32", "b/32"}));
}

}  // namespace
