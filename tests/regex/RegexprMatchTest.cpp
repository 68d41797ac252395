// The matcher and the search: results, registers, two-part texts, the
// failure stack, the star_jump rewrite and the first-character map.
#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/regex/internal/RegexprMatcher.h>

#include "RegexprTestSupport.h"

namespace {

using namespace regex_test;

struct SearchCase {
  char const *pattern;
  std::string text;
  int at;      // where the match begins, or -1
  int length;  // of the match
};

// Each case is searched with and without a first-character map, which must
// not change the result.
TEST(RegexprMatchTest, SearchFindsTheFirstMatchFromTheLeft) {
  SearchCase const cases[] = {
      {"abc", "xABCx", 1, 3},        {"[a-c]+", "ABC", -1, 0},     {"[A-C]+", "xABC", 1, 3},
      {"(a)\\1", "aa", 0, 2},        {"(a)\\1", "aA", -1, 0},       {"(a)\\v10", "aa", 0, 2},
      {"([a-z]+)-\\1", "xx abc-abc", 3, 7},                       {"([a-z]+)-\\1", "abc-ABC", -1, 0},
      {".", "\n", -1, 0},            {"[^a]", "\n", 0, 1},          {"^b", "a\nb", 2, 1},
      {"^b", "ab", -1, 0},           {"a$", "a\nb", 0, 1},          {"a$", "ab", -1, 0},
      {"b$", "ab", 1, 1},            {"\\1", "aaa", -1, 0},         {"x*", "", 0, 0},
      {"", "abc", 0, 0},             {"a*a", "aaa", 0, 3},          {"a*b", "aaab", 0, 4},
      {"a+", "baaa", 1, 3},          {"a?b", "cab", 1, 2},          {"cat|dog", "hotdog", 3, 3},
      {"(ab)+c", "ababc", 0, 5},     {"a.c", "a\nc abc", 4, 3},     {"[0-9]+\\.[0-9]*", "v12.5", 1, 4},
      {"x\\x41", "xa", 0, 2},        {"$", "ab", 2, 0},             {"a*$", "baa", 1, 2},
  };
  for (bool withMap : {false, true}) {
    for (SearchCase const &c : cases) {
      Compiled compiled(c.pattern);
      ASSERT_EQ(compiled.Error(), nullptr) << c.pattern;
      if (withMap) compiled.AddFirstMap();
      regexpr_registers regs;
      int const at = compiled.Search(c.text, &regs);
      EXPECT_EQ(at, c.at) << c.pattern << " in " << c.text << (withMap ? " with map" : "");
      if (at >= 0) {
        EXPECT_EQ(regs.start[0], c.at) << c.pattern;
        EXPECT_EQ(regs.end[0] - regs.start[0], c.length) << c.pattern;
      }
    }
  }
}

TEST(RegexprMatchTest, RegistersRecordGroupsAndSurviveBacktracking) {
  Compiled compiled("(a)x|ab");
  regexpr_registers regs;
  EXPECT_EQ(compiled.Match("ab", 0, &regs), 2);
  EXPECT_EQ(regs.start[0], 0);
  EXPECT_EQ(regs.end[0], 2);
  // The abandoned first alternative's group keeps what it matched.
  EXPECT_EQ(regs.start[1], 0);
  EXPECT_EQ(regs.end[1], 1);
  for (int r = 2; r < REGEXPR_REGISTERS; ++r) EXPECT_EQ(regs.start[r], -1);

  Compiled nested("((a)(b))c(d)?");
  EXPECT_EQ(nested.Search("xabc", &regs), 1);
  EXPECT_EQ(regs.start[1], 1);
  EXPECT_EQ(regs.end[1], 3);
  EXPECT_EQ(regs.start[2], 1);
  EXPECT_EQ(regs.end[2], 2);
  EXPECT_EQ(regs.start[3], 2);
  EXPECT_EQ(regs.end[3], 3);
  EXPECT_EQ(regs.start[4], -1) << "an optional group that did not take part";
  EXPECT_EQ(regs.end[4], -1);

  Compiled plain("b");
  regs.start[5] = 7;
  EXPECT_EQ(plain.Search("ab", &regs), 1);
  EXPECT_EQ(regs.start[5], -1) << "without groups every group register is unset";

  Compiled ten("(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)");
  ASSERT_EQ(ten.Match("abcdefghij", 0, &regs), 10);
  for (int r = 1; r < REGEXPR_REGISTERS; ++r) EXPECT_TRUE(regs.start[r] == r - 1 && regs.end[r] == r) << r;
}

TEST(RegexprMatchTest, WordOperatorsLookAtBothSides) {
  struct Case {
    char const *pattern;
    char const *text;
    int at;
  } const cases[] = {
      {"\\<b", "ab b", 3},        {"b\\>", "bb a", 1},       {"\\bx", "x", 0},
      {"x\\b", "x", 0},           {"a\\bb", "ab", -1},       {"a\\b-", "a-", 0},
      {"\\Bx", "x", -1},          {"x\\B", "x", -1},         {"a\\B-", "a-", 0},
      {"a\\Bb", "ab", -1},        {"\\w+", "--ab1_", 2},     {"\\W", "ab_", 2},
      {"\\`a", "ba", -1},         {"a\\'", "aba", 2},        {"\\<", "", -1},
      {"\\>", "", -1},
  };
  for (auto const &c : cases) {
    Compiled compiled(c.pattern, kWordSyntax);
    ASSERT_EQ(compiled.Error(), nullptr) << c.pattern;
    EXPECT_EQ(compiled.Search(c.text), c.at) << c.pattern << " in " << c.text;
  }
}

TEST(RegexprMatchTest, SearchesBackwardsWithANegativeRange) {
  for (bool withMap : {false, true}) {
    Compiled compiled("a+");
    if (withMap) compiled.AddFirstMap();
    std::string const text = "a-aa-a";
    EXPECT_EQ(compiled.Search(text, 5, -5), 5);
    EXPECT_EQ(compiled.Search(text, 4, -4), 3);
    EXPECT_EQ(compiled.Search(text, 4, -1), 3);
    EXPECT_EQ(compiled.Search(text, 1, -1), 0);
    EXPECT_EQ(compiled.Search(text, 1, 0), -1) << "range 0 tries only the start";
    EXPECT_EQ(compiled.Search(text, 6, -100), 5) << "a range past the start stops there";
    EXPECT_EQ(compiled.Search(text, 1, 100), 2) << "a range past the end stops there";
    EXPECT_EQ(compiled.Search(text, 7, 1), -1);
    EXPECT_EQ(compiled.Search(text, -1, 3), -1);
  }
}

TEST(RegexprMatchTest, SearchesTwoPartsAsIfJoined) {
  Compiled compiled("(lo) (w)or");
  regexpr_set_syntax(kDefaultSyntax);
  regexpr_registers regs;
  char const first[] = "hello w";
  char const second[] = "orld";
  EXPECT_EQ(regexpr_search_parts(compiled.Buffer(), first, 7, second, 4, 0, 11, &regs, 11), 3);
  EXPECT_EQ(regs.end[0], 9);
  EXPECT_EQ(regs.start[2], 6);
  EXPECT_EQ(regs.end[2], 7);
  // The stop offset ends the text: nothing at or beyond it is read.
  EXPECT_EQ(regexpr_search_parts(compiled.Buffer(), first, 7, second, 4, 0, 11, &regs, 8), -1);
  EXPECT_EQ(regexpr_match_parts(compiled.Buffer(), first, 7, second, 4, 3, &regs, 9), 6);

  Compiled lineEnd("o$");
  EXPECT_EQ(regexpr_search_parts(lineEnd.Buffer(), "hello", 5, "\nx", 2, 0, 7, nullptr, 7), 4);
  EXPECT_EQ(regexpr_search_parts(lineEnd.Buffer(), "hello", 5, "x", 1, 0, 6, nullptr, 6), -1);
  EXPECT_EQ(regexpr_search_parts(lineEnd.Buffer(), "", 0, "hello", 5, 0, 5, nullptr, 5), 4);

  Compiled backref("(ab)\\1");
  EXPECT_EQ(regexpr_search_parts(backref.Buffer(), "xa", 2, "bab", 3, 0, 5, &regs, 5), 1);
  EXPECT_EQ(regs.end[0], 5);
}

TEST(RegexprMatchTest, WordStartAtThePartBoundaryReadsTheFirstPartsFirstByte) {
  // Deliberate quirk: at the end of the first part op_word_start takes the
  // first byte of the first part as the byte at the position.
  Compiled compiled("\\<-", kWordSyntax);
  regexpr_set_syntax(kWordSyntax);
  EXPECT_EQ(regexpr_match_parts(compiled.Buffer(), "a-", 2, "-z", 2, 2, nullptr, 4), 1);
  EXPECT_EQ(compiled.Match("a--z", 2), -1);
}

TEST(RegexprMatchTest, StarJumpBecomesABranchUpdateWhenTheLoopCannotOverlap) {
  struct Case {
    char const *pattern;
    char const *text;
    int starJumpAt;
    unsigned char becomes;
  } const cases[] = {
      {"a*b", "aaab", 5, kBranchUpdate},   {"a*a", "aaa", 5, kJump},          {"a*", "aa", 5, kBranchUpdate},
      {"a*A", "aa", 5, kJump},             {"a*[A]", "aA", 5, kJump},         {"[ab]*c", "abc", 36, kBranchUpdate},
      {".*\\n", "ab\n", 4, kBranchUpdate},  {".*b", "abb", 4, kJump},          {"(a)*b", "ab", 9, kBranchUpdate},
      {"(a|b)*c", "abc", 17, kJump},       {"(a?)*b", "ab", 12, kJump},       {"\\w*-", "ab-", 0, 0},
      {"(ab)*a", "aba", 11, kJump},        {"(ab)*b", "abb", 11, kBranchUpdate},
  };
  for (auto const &c : cases) {
    Compiled compiled(c.pattern);
    ASSERT_EQ(compiled.Error(), nullptr) << c.pattern;
    if (c.becomes == 0) continue;
    Bytes const before = compiled.ProgramBytes();
    ASSERT_EQ(before.at(c.starJumpAt), kStarJump) << c.pattern;
    compiled.Search(c.text);
    Bytes const after = compiled.ProgramBytes();
    EXPECT_EQ(after[c.starJumpAt], c.becomes) << c.pattern;
    int const displacement = static_cast<short>(before[c.starJumpAt + 1] | before[c.starJumpAt + 2] << 8);
    int const rewritten = static_cast<short>(after[c.starJumpAt + 1] | after[c.starJumpAt + 2] << 8);
    EXPECT_EQ(rewritten, displacement + (c.becomes == kBranchUpdate ? 3 : 0)) << c.pattern;
  }
}

TEST(RegexprMatchTest, FailureStackHolds4100EntriesThenGivesUp) {
  // a*a keeps a plain jump, so each round of the loop pushes one entry:
  // n letters take n + 1 entries.
  Compiled compiled("a*a");
  EXPECT_EQ(compiled.Match(std::string(100, 'a')), 100) << "within the frame's 128";
  EXPECT_EQ(compiled.Match(std::string(4099, 'a')), 4099);
  EXPECT_EQ(compiled.Match(std::string(4100, 'a')), -2);
  EXPECT_EQ(compiled.Search(std::string(4100, 'a')), -2) << "the search stops at -2";

  Compiled alternation("(a|b)*c");
  EXPECT_EQ(alternation.Search(std::string(5000, 'a')), -2);
  Compiled emptyRounds("(a?)*b");
  EXPECT_EQ(emptyRounds.Search("ab"), -2) << "rounds that match empty go on until the stack is full";
  Compiled emptyLoop("()*");
  EXPECT_EQ(emptyLoop.Match("x"), -2) << "a loop that consumes nothing runs until the stack is full";

  // A rewritten loop reuses one entry, so it has no such limit.
  std::string const many(20000, 'a');
  Compiled star("a*b");
  EXPECT_EQ(star.Match(many + "b"), 20001);
  EXPECT_EQ(star.Match(many + "b"), 20001) << "and again with the rewritten program";
  Compiled plus("a+b");
  EXPECT_EQ(plus.Match(many + "b"), 20001);
  EXPECT_EQ(plus.Match("b"), -1);
  Compiled update("(ab)+c");
  EXPECT_EQ(update.Match("ababc"), 5);
  EXPECT_EQ(update.Match("c"), -1);
}

TEST(RegexprMatchTest, ExponentialBacktrackingEndsWithinTheWorkBound) {
  Compiled linear("(a|aa)(a|aa)*(a|aa)*(a|aa)*b");
  EXPECT_EQ(linear.Search(std::string(60, 'a')), -1) << "no back reference: failed states are remembered";
  EXPECT_EQ(linear.Search("aaaab"), 0);
  Compiled backref("(a|aa)(a|aa)*(a|aa)*(a|aa)*\\1b");
  EXPECT_EQ(backref.Search(std::string(60, 'a')), -2) << "a back reference rules the memo out";
  EXPECT_EQ(backref.Search("aaaaab"), 0) << "ordinary inputs are unaffected";
}

// Runs a search with and without the memo of failed states, on two copies of
// the program: results, registers and the rewritten programs must agree.
void ExpectSameWithMemo(std::string const &pattern, std::string const &text, int syntax = kDefaultSyntax) {
  Compiled with(pattern, syntax), without(pattern, syntax);
  ASSERT_EQ(with.Error(), nullptr) << pattern;
  int const size = static_cast<int>(text.size()), split = size / 2;
  regexpr_registers regs[2] = {};
  int results[2];
  for (bool memo : {true, false}) {
    bool ranOut = false;
    regexpr_set_syntax(syntax);
    results[memo] = znutil::detail::RegexprSearchUsingMemo((memo ? with : without).Buffer(), text.data(), split,
                                                           text.data() + split, size - split, 0, size, &regs[memo],
                                                           size, memo, std::int64_t{1} << 40, &ranOut);
    ASSERT_FALSE(ranOut) << pattern;
  }
  EXPECT_EQ(results[0], results[1]) << pattern << " / " << text;
  if (results[0] >= 0) {
    for (int r = 0; r < REGEXPR_REGISTERS; ++r) {
      EXPECT_EQ(regs[0].start[r], regs[1].start[r]) << pattern << " / " << text << " register " << r;
      EXPECT_EQ(regs[0].end[r], regs[1].end[r]) << pattern << " / " << text << " register " << r;
    }
  }
  EXPECT_EQ(with.ProgramBytes(), without.ProgramBytes()) << pattern;
}

TEST(RegexprMatchTest, MemoOfFailedStatesChangesNoResultOrRegister) {
  std::string const optionals = [] {
    std::string p;
    for (int i = 0; i < 12; ++i) p += "a?";
    return p + std::string(12, 'a');
  }();
  std::pair<char const *, std::string> const cases[] = {
      {"(a)x|ab", "ab"},                   {"(a|ab)(c|bcd)(d*)", "abcd"},      {"(a|aa)*(a|aa)*b", std::string(14, 'a')},
      {"(a|aa)*(a|aa)*b", "aaaaab"},       {"(x+x+)+y", std::string(14, 'x')}, {"(x+x+)+y", "xxxxxy"},
      {"(a*)*b", "aaa"},                   {"(a?)*b", "ab"},                   {"a*c", "aaaabc"},
      {"(ab)+c", "abababc"},               {"((a)|(b))*c", "abab"},            {"((a)|(b))*c", "ababc"},
      {"(a|b)*(ab)*c", "abababd"},         {"x*(a|b)*y*$", "abxxby\nab"},     {"^(a|ab)*c", "ab\nabc"},
      {"([ab]*)(b|c)*d", "abcbcbe"},       {"(a+)+(b+)+c", "aabbaabb"},        {"(.*)(.*)x", "yyyy\nyx"},
      {optionals.c_str(), std::string(12, 'a')}, {"(.)+b|a", "ba"},   {"a*(y?)c|aab", "aaab"},
      {"(aa|a?a?)(a|b)*c", std::string(2050, 'a')},  // the later way in overflows the stack
      {"(aa|a?a?)(a|b)*c", std::string(2049, 'a')},  // ... and here fills it exactly
  };
  for (auto const &c : cases) ExpectSameWithMemo(c.first, c.second);
  ExpectSameWithMemo("\\<((a)|aa)*\\>b?", "aaa aa", kWordSyntax);
  ExpectSameWithMemo("(\\w+\\b)+x", "ab cd ef", kWordSyntax);

  // Linear work where the plain backtracker needs exponential work.
  Compiled exponential("(a|aa)*(a|aa)*b");
  std::string const text(40, 'a');
  for (bool memo : {true, false}) {
    bool ranOut = false;
    regexpr_set_syntax(kDefaultSyntax);
    znutil::detail::RegexprSearchUsingMemo(exponential.Buffer(), text.data(), 40, nullptr, 0, 0, 40, nullptr, 40, memo,
                                           20000, &ranOut);
    EXPECT_EQ(ranOut, !memo);
  }
}

// Searches that scan to the end of the text from every start are quadratic,
// and the work bound leaves them their result.
TEST(RegexprMatchTest, QuadraticSearchesKeepTheirResult) {
  Compiled star("a*c");
  EXPECT_EQ(star.Search(std::string(2500, 'a') + "bc"), 2501);
  Compiled any(".*x");
  EXPECT_EQ(any.Search(std::string(1500, 'y') + "\nx"), 1501);
  Compiled plain("(a|b)*c");  // one failure entry a round, no rewrite
  EXPECT_EQ(plain.Search(std::string(1500, 'a') + "dc"), 1501);
}

TEST(RegexprMatchTest, FirstMapSearchKeepsResultsAndAnchors) {
  Compiled lineStart("^a");
  lineStart.AddFirstMap();
  EXPECT_EQ(lineStart.Buffer()->anchor, 1);
  EXPECT_EQ(lineStart.Search("ba\naa"), 3);
  EXPECT_EQ(lineStart.Search("ba ba"), -1);

  Compiled textStart("\\`a", kWordSyntax);
  textStart.AddFirstMap();
  EXPECT_EQ(textStart.Search("aa", 0, 2), 0);
  EXPECT_EQ(textStart.Search("aa", 1, 1), -1) << "a buffer-start pattern only tries offset 0";

  Compiled lineEnd("x?$");
  lineEnd.AddFirstMap();
  EXPECT_EQ(lineEnd.Search("ab"), 2) << "can match empty at the end";

  // A stale map is rebuilt by the next search.
  Compiled recompiled("q");
  recompiled.AddFirstMap();
  regexpr_set_syntax(kDefaultSyntax);
  ASSERT_EQ(regexpr_compile("z", 1, recompiled.Buffer()), nullptr);
  EXPECT_EQ(recompiled.Buffer()->first_map_valid, 0);
  EXPECT_EQ(recompiled.Search("aqz"), 2);

  unsigned char translate[256];  // applies to the text and to back references
  for (int c = 0; c < 256; ++c) translate[c] = static_cast<unsigned char>(c == '-' ? '_' : c);
  Compiled translated("a_(b)\\1");
  translated.Buffer()->translate = translate;
  EXPECT_EQ(translated.Search("xa-bb"), 1);
  translated.AddFirstMap();
  EXPECT_EQ(translated.Search("xa-bb"), 1);
}

TEST(RegexprMatchTest, BadArgumentsAndPartialProgramsFindNothing) {
  Compiled compiled("a");
  regexpr_set_syntax(kDefaultSyntax);
  EXPECT_EQ(regexpr_match(compiled.Buffer(), "a", 1, 2, nullptr), -1);
  EXPECT_EQ(regexpr_match(compiled.Buffer(), "a", -1, 0, nullptr), -1);
  EXPECT_EQ(regexpr_match_parts(compiled.Buffer(), nullptr, 3, "a", 1, 0, nullptr, 4), -1);
  EXPECT_EQ(regexpr_search_parts(compiled.Buffer(), nullptr, 3, "a", 1, 0, 4, nullptr, 4), -1);
  EXPECT_EQ(regexpr_search(compiled.Buffer(), "a", 1, 1, -2147483647 - 1, nullptr), 0);
  EXPECT_EQ(regexpr_match_parts(compiled.Buffer(), "ba", 2, "a", 1, 1, nullptr, 99), 1) << "stop is cut to the text";
  // 101 alternatives leave a chain of branches that all lead on to a last
  // one that jumps outside the program: it must fail, not give up.
  for (std::string const &pattern : std::vector<std::string>{"a(", "a|b\\0", "(a*\\0", "[a", std::string(101, '|')}) {
    Compiled partial(pattern);
    ASSERT_NE(partial.Error(), nullptr);
    EXPECT_EQ(partial.Search("aaaa"), -1) << pattern;
    partial.AddFirstMap();
    EXPECT_EQ(partial.Search("aaaa"), -1) << pattern;
  }
}

// A jump too long for its 16-bit operand fails the compile; the partial
// program must still hold only bytes the compiler wrote (the buffer is
// filled with bytes that are no opcode) and never match.
TEST(RegexprMatchTest, ProgramsWithAJumpTooLongNeverMatch) {
  std::string const body(17000, 'a');
  for (std::string const &pattern : {"(" + body + ")*b", "(" + std::string(16380, 'a') + ")*b", "(" + body + "|b)"}) {
    regexpr_buffer buffer = {};
    buffer.allocated = 1 << 17;
    buffer.buffer = static_cast<unsigned char *>(ZenoUtilAlloc(static_cast<unsigned>(buffer.allocated)));
    std::fill(buffer.buffer, buffer.buffer + buffer.allocated, 0xFF);
    regexpr_set_syntax(kDefaultSyntax);
    EXPECT_STREQ(regexpr_compile(pattern.data(), static_cast<int>(pattern.size()), &buffer),
                 "Regular expression too complex");
    std::string const text = std::string(300, 'a') + "b";
    for (bool map : {false, true}) {
      unsigned char firstMap[256];
      buffer.first_map = map ? firstMap : nullptr;
      regexpr_compile_first_map(&buffer);
      EXPECT_EQ(regexpr_search(&buffer, text.data(), int(text.size()), 0, int(text.size()), nullptr), -1);
      EXPECT_EQ(regexpr_match(&buffer, "b", 1, 0, nullptr), -1);
    }
    ZenoUtilFree(buffer.buffer);
  }
}

}  // namespace
