#include <znutil/regex/ZnRegularExpression.h>

#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string Text(ZnString const &s) { return std::string(static_cast<char const *>(s), s.Length()); }

TEST(ZnRegularExpressionTest, CompilesAndReportsErrors) {
  ZnRegularExpression good("a(b)c");
  EXPECT_TRUE(good.Valid());
  EXPECT_TRUE(good.CompileErrorString() == NULL_STRING);
  ZnRegularExpression bad("(a");
  EXPECT_FALSE(bad.Valid());
  EXPECT_EQ(Text(bad.CompileErrorString()), "Badly placed parenthesis");
  EXPECT_FALSE(bad.Matches("aaa")) << "a partial program matches nothing";
  EXPECT_EQ(Text(ZnRegularExpression("a**+?|*").CompileErrorString()), "Badly placed special character");
  // The register count is a plain count of opening parentheses, escaped or in sets too.
  struct {
    char const *pattern;
    int count;
  } const counts[] = {{"a(b)c", 1}, {"(a", 0}, {"\\(", 1}, {"[(]", 1}, {"(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)", 11}, {"", 0}};
  for (auto const &c : counts) EXPECT_EQ(ZnRegularExpression(c.pattern).RegisterCount(), c.count) << c.pattern;
}

TEST(ZnRegularExpressionTest, MatchesRecordsPositionAndRegisters) {
  ZnRegularExpression re("([a-z]+)@([a-z]+)\\.org");
  EXPECT_FALSE(re.HaveMatch()) << "no match before the first search";
  ASSERT_TRUE(re.Matches("mail: bob@example.org!"));
  EXPECT_TRUE(re.HaveMatch());
  EXPECT_EQ(re.MatchedStart(), 6);
  EXPECT_EQ(re.MatchedEnd(), 21);
  EXPECT_EQ(re.RegisterStart(1), 6);
  EXPECT_EQ(re.RegisterEnd(1), 9);
  EXPECT_EQ(re.RegisterStart(2), 10);
  EXPECT_EQ(re.RegisterEnd(2), 17);
  EXPECT_EQ(re.RegisterStart(3), -1);
  EXPECT_EQ(re.RegisterStart(10), -1) << "outside the registers";
  EXPECT_EQ(re.RegisterEnd(-1), -1);
  EXPECT_FALSE(re.Matches("bob at example.org"));
  EXPECT_FALSE(re.HaveMatch());
  EXPECT_FALSE(re.GaveUp()) << "no match is not giving up";

  ZnRegularExpression folded("ABC");
  EXPECT_FALSE(folded.HaveMatch() || folded.GaveUp()) << "a new expression has neither matched nor given up";
  EXPECT_TRUE(folded.Matches("xabcx"));
  EXPECT_EQ(folded.MatchedStart(), 1);
  ZnRegularExpression empty("");
  EXPECT_TRUE(empty.Matches(NULL_STRING));
  EXPECT_EQ(empty.MatchedEnd(), 0);

  ZnRegularExpression exhausting("(a|b)*c");
  EXPECT_FALSE(exhausting.Matches(ZnString::MakeFill('a', 5000))) << "an exhausted failure stack is no match";
  EXPECT_FALSE(exhausting.HaveMatch());
  EXPECT_TRUE(exhausting.GaveUp());
  ZnRegularExpression exponential("(a|aa)(a|aa)*(a|aa)*(a|aa)*\\1b");
  EXPECT_FALSE(exponential.Matches(ZnString::MakeFill('a', 60)));
  EXPECT_TRUE(exponential.GaveUp()) << "the work bound ran out";
  EXPECT_TRUE(exhausting.Matches("abac"));
  EXPECT_FALSE(exhausting.GaveUp());
}

TEST(ZnRegularExpressionTest, CopiesShareTheProgramAndLiveIndependently) {
  auto *original = new ZnRegularExpression("x(y+)z");
  ZnRegularExpression copy(*original);
  original->Optimize();
  ZnRegularExpression assigned("unused");
  assigned = *original;
  delete original;
  EXPECT_TRUE(copy.Matches("axyyz"));
  EXPECT_EQ(copy.RegisterEnd(1), 4);
  copy.Optimize();
  EXPECT_TRUE(assigned.Matches("xyz"));
  EXPECT_FALSE(copy.Matches("xz"));
  assigned = assigned;
  EXPECT_TRUE(assigned.Valid());
}

TEST(ZnRegularExpressionTest, OptimizedLineStartTriesOnlyLineStarts) {
  ZnRegularExpression optimized("^b+");
  optimized.Optimize();
  optimized.Optimize();  // only the first call has effect
  EXPECT_TRUE(optimized.Matches("ab\nbb"));
  EXPECT_EQ(optimized.MatchedStart(), 3);
  for (char const *text : {"bab", "a\n\nb"}) EXPECT_TRUE(optimized.Matches(text)) << text;
  for (char const *text : {"ab", "\n"}) EXPECT_FALSE(optimized.Matches(text)) << text;
}

struct DosCase {
  char const *wildcard;
  char const *pattern;
};

TEST(ZnRegularExpressionTest, DosToRegExConvertsWildcards) {
  DosCase const cases[] = {
      {"", "^$"},
      {"a?c", "^a.c$"},
      {"*.txt", "^.*\\.txt$"},
      {"*", "^.*$"},
      {"a.b.c", "^a\\.b\\.c$"},
      {"..", "^\\.\\.$"},
      {"f(1)+[x]", "^f(1)+[x]$"},  // kept as pattern characters: deliberate
  };
  for (DosCase const &c : cases) EXPECT_EQ(Text(ZnRegularExpression::DosToRegEx(c.wildcard)), c.pattern);

  ZnRegularExpression re(ZnRegularExpression::DosToRegEx("*.TXT"));
  EXPECT_TRUE(re.Matches("notes.txt"));
  EXPECT_FALSE(re.Matches("notes.txt.bak"));
  EXPECT_FALSE(re.Matches("notesatxt"));
}

// Random patterns over a small alphabet, searched in random texts with and
// without Optimize: the first map only skips positions where no match can
// begin, so where both searches finish, they agree.
TEST(ZnRegularExpressionTest, OptimizeNeverChangesAResult) {
  std::mt19937 random(20240611);
  auto pick = [&random](char const *from) {
    std::string const s(from);
    return s[random() % s.size()];
  };
  int compared = 0;
  for (int round = 0; round < 4000; ++round) {
    std::string pattern;
    for (int n = random() % 8; n >= 0; --n) pattern += pick("abcAB..**+?|()[]^$-\\");
    ZnRegularExpression plain(pattern.c_str());
    if (!plain.Valid()) continue;
    ZnRegularExpression optimized(pattern.c_str());
    optimized.Optimize();
    for (int t = 0; t < 8; ++t) {
      std::string text;
      for (int n = random() % 12; n > 0; --n) text += pick("abcAB\n-");
      ZnString const subject(text.c_str());
      bool const found = plain.Matches(subject);
      bool const foundOptimized = optimized.Matches(subject);
      if (plain.GaveUp()) continue;  // it may give up where the map skips
      ++compared;
      ASSERT_EQ(found, foundOptimized) << "pattern " << pattern << " text " << text;
      EXPECT_EQ(plain.MatchedStart(), optimized.MatchedStart()) << pattern << " / " << text;
      EXPECT_EQ(plain.MatchedEnd(), optimized.MatchedEnd()) << pattern << " / " << text;
      for (int r = 1; r < REGEXPR_REGISTERS; ++r) {
        EXPECT_EQ(plain.RegisterStart(r), optimized.RegisterStart(r)) << pattern << " / " << text;
        EXPECT_EQ(plain.RegisterEnd(r), optimized.RegisterEnd(r)) << pattern << " / " << text;
      }
    }
  }
  EXPECT_GT(compared, 1000);
}

}  // namespace
