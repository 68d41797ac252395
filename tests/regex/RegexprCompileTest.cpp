// The compiler: byte programs, sets, messages and first-character maps.
#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "RegexprTestSupport.h"

namespace {

using namespace regex_test;

std::string Members(Bytes const &program) {
  std::string members;
  for (int c = 0; c < 256; ++c) {
    if ((program.at(1 + c / 8) >> (c % 8)) & 1) members += static_cast<char>(c);
  }
  return members;
}

std::string AllBut(std::string const &excluded) {
  std::string all;
  for (int c = 0; c < 256; ++c) {
    if (excluded.find(static_cast<char>(c)) == std::string::npos) all += static_cast<char>(c);
  }
  return all;
}

struct ProgramCase {
  std::string pattern;
  int syntax;
  Bytes program;
};

TEST(RegexprCompileTest, EmitsTheByteProgramOfEachConstruct) {
  ProgramCase const cases[] = {
      {"a", kDefaultSyntax, Program({Char('a'), Op(kEnd)})},
      {"A", kDefaultSyntax, Program({Char('a'), Op(kEnd)})},
      {"A", kDefaultSyntax & ~SYNTAX_FOLD_CASE, Program({Char('A'), Op(kEnd)})},
      {"a*", kDefaultSyntax, Program({Jump(kBranch, 5), Char('a'), Jump(kStarJump, -8), Op(kEnd)})},
      {"a+", kDefaultSyntax,
       Program({Jump(kBranchEnter, 3), Jump(kBranch, 5), Char('a'), Jump(kStarJump, -8), Op(kEnd)})},
      {"a?", kDefaultSyntax, Program({Jump(kBranch, 2), Char('a'), Op(kEnd)})},
      {"a**", kDefaultSyntax,
       Program({Jump(kBranch, 11), Jump(kBranch, 5), Char('a'), Jump(kStarJump, -8), Jump(kStarJump, -14),
                Op(kEnd)})},
      {"ab*", kDefaultSyntax, Program({Char('a'), Jump(kBranch, 5), Char('b'), Jump(kStarJump, -8), Op(kEnd)})},
      {"a|b", kDefaultSyntax, Program({Jump(kBranch, 5), Char('a'), Jump(kJump, 2), Char('b'), Op(kEnd)})},
      {"a\nb", kDefaultSyntax, Program({Jump(kBranch, 5), Char('a'), Jump(kJump, 2), Char('b'), Op(kEnd)})},
      {"ab|cd", kDefaultSyntax,
       Program({Jump(kBranch, 7), Char('a'), Char('b'), Jump(kJump, 4), Char('c'), Char('d'), Op(kEnd)})},
      {"a|b|c", kDefaultSyntax,
       Program({Jump(kBranch, 5), Char('a'), Jump(kJump, 10), Jump(kBranch, 5), Char('b'), Jump(kJump, 2), Char('c'),
                Op(kEnd)})},
      {"a|", kDefaultSyntax, Program({Jump(kBranch, 5), Char('a'), Jump(kJump, 0), Op(kEnd)})},
      {"|a", kDefaultSyntax, Program({Jump(kBranch, 3), Jump(kJump, 2), Char('a'), Op(kEnd)})},
      {"(a)", kDefaultSyntax, Program({Op(kGroupOpen, 1), Char('a'), Op(kGroupClose, 1), Op(kEnd)})},
      {"()", kDefaultSyntax, Program({Op(kGroupOpen, 1), Op(kGroupClose, 1), Op(kEnd)})},
      {"(a)*", kDefaultSyntax,
       Program({Jump(kBranch, 9), Op(kGroupOpen, 1), Char('a'), Op(kGroupClose, 1), Jump(kStarJump, -12),
                Op(kEnd)})},
      {"(a|b)*c", kDefaultSyntax,
       Program({Jump(kBranch, 17), Op(kGroupOpen, 1), Jump(kBranch, 5), Char('a'), Jump(kJump, 2), Char('b'),
                Op(kGroupClose, 1), Jump(kStarJump, -20), Char('c'), Op(kEnd)})},
      {"^a$", kDefaultSyntax, Program({Op(kLineStart), Char('a'), Op(kLineEnd), Op(kEnd)})},
      {"^*", kDefaultSyntax, Program({Op(kLineStart), Op(kEnd)})},
      {"^a|b", kDefaultSyntax,
       Program({Jump(kBranch, 6), Op(kLineStart), Char('a'), Jump(kJump, 2), Char('b'), Op(kEnd)})},
      {"(a$)", kDefaultSyntax, Program({Op(kGroupOpen, 1), Char('a'), Op(kLineEnd), Op(kGroupClose, 1), Op(kEnd)})},
      {".", kDefaultSyntax, Program({Op(kAny), Op(kEnd)})},
      {"\\1", kDefaultSyntax, Program({Op(kBackref, 1), Op(kEnd)})},
      {"\\v30", kDefaultSyntax, Program({Op(kBackref, 3), Op(kEnd)})},
      {"\\(\\|\\)", kDefaultSyntax, Program({Char('('), Char('|'), Char(')'), Op(kEnd)})},
      {"\\w\\b\\V\\x41\\n\\T", kDefaultSyntax,
       Program({Char('w'), Char(8), Char(11), Char('a'), Char(10), Char(9), Op(kEnd)})},
      {"\\<a\\>", kWordSyntax, Program({Op(kWordStart), Char('a'), Op(kWordEnd), Op(kEnd)})},
      {"\\w\\W\\b\\B\\`\\'", kWordSyntax,
       Program({Op(kWordChar, 1), Op(kNotWordChar, 1), Op(kWordEdge), Op(kNotWordEdge), Op(kTextStart),
                Op(kTextEnd), Op(kEnd)})},
      {"\\(a\\)\\|b", 0,
       Program({Jump(kBranch, 9), Op(kGroupOpen, 1), Char('a'), Op(kGroupClose, 1), Jump(kJump, 2), Char('b'),
                Op(kEnd)})},
      {"a$\\|b", 0, Program({Jump(kBranch, 6), Char('a'), Op(kLineEnd), Jump(kJump, 2), Char('b'), Op(kEnd)})},
      {"a\\+", SYNTAX_QUOTED_PLUS_QM,
       Program({Jump(kBranchEnter, 3), Jump(kBranch, 5), Char('a'), Jump(kStarJump, -8), Op(kEnd)})},
      {"a+\\n", 0, Program({Jump(kBranchEnter, 3), Jump(kBranch, 5), Char('a'), Jump(kStarJump, -8), Char('n'),
                            Op(kEnd)})},
      {"*a^", kDefaultSyntax & ~SYNTAX_STRICT_OPERATORS, Program({Char('*'), Char('a'), Char('^'), Op(kEnd)})},
      // With this option the anchor applies to the whole alternation that follows it.
      {"^a|b", kDefaultSyntax | SYNTAX_VBAR_OVER_ANCHORS,
       Program({Op(kLineStart), Jump(kBranch, 5), Char('a'), Jump(kJump, 2), Char('b'), Op(kEnd)})},
      {std::string("a\0b", 3), kDefaultSyntax, Program({Char('a'), Char('\0'), Char('b'), Op(kEnd)})},
  };
  for (ProgramCase const &c : cases) {
    Compiled compiled(c.pattern, c.syntax);
    ASSERT_EQ(compiled.Error(), nullptr) << c.pattern;
    EXPECT_EQ(compiled.ProgramBytes(), c.program) << c.pattern << " under " << c.syntax;
  }
}

TEST(RegexprCompileTest, GroupsBeyondTheNinthGroupButCaptureNothing) {
  Bytes flat, nested = Program({Char('a')});
  for (unsigned char r = 1; r <= 9; ++r) {
    flat = Program({flat, Op(kGroupOpen, r), Char('a' + r - 1), Op(kGroupClose, r)});
    nested = Program({Op(kGroupOpen, 10 - r), nested, Op(kGroupClose, 10 - r)});
  }
  EXPECT_EQ(Compiled("(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)").ProgramBytes(), Program({flat, Char('j'), Op(kEnd)}));
  EXPECT_EQ(Compiled("((((((((((((a))))))))))))").ProgramBytes(), Program({nested, Op(kEnd)}));
}

struct SetCase {
  char const *pattern;
  std::string members;
};

TEST(RegexprCompileTest, SetsHoldTheirMembersUnfolded) {
  SetCase const cases[] = {
      {"[a-c]", "abc"},
      {"[]a]", "]a"},
      {"[a-]", "-a"},
      {"[a-c-e]", "-abce"},
      {"[z-a]", "z"},  // z is a member before the - makes it a range, which adds nothing
      {"[A]", "A"},
      {"[\\v]", "\v"},
      {"[\\]x]", "]x"},
      {"[\\x41-\\x43]", "ABC"},
      {"[\\x30\\x39\\x3a\\x3F]", "09:?"},  // both ends of the digits, a letter of each case
      {"[^a]", AllBut("a")},
      {"[^]]", AllBut("]")},
      {"[.*(|]", "(*.|"},
  };
  for (SetCase const &c : cases) {
    Compiled compiled(c.pattern);
    ASSERT_EQ(compiled.Error(), nullptr) << c.pattern;
    Bytes const program = compiled.ProgramBytes();
    ASSERT_EQ(program.size(), 34u) << c.pattern;
    EXPECT_EQ(program[0], kSet);
    EXPECT_EQ(Members(program), c.members) << c.pattern;
  }
  // Without escape sequences a backslash is an ordinary member.
  Compiled plain("[\\n]", kDefaultSyntax & ~SYNTAX_ESCAPE_SEQUENCES);
  EXPECT_EQ(Members(plain.ProgramBytes()), "\\n");
}

struct ErrorCase {
  std::string pattern;
  char const *message;
};

TEST(RegexprCompileTest, ReportsEachErrorWithItsMessage) {
  char const *const special = "Badly placed special character";
  char const *const parenthesis = "Badly placed parenthesis";
  char const *const premature = "Regular expression ends prematurely";
  char const *const registerNumber = "Bad match register number";
  char const *const complex = "Regular expression too complex";
  ErrorCase const cases[] = {
      {"*a", special},         {"+a", special},           {"?a", special},
      {"(*a)", special},       {"a|*b", special},         {"a^b", special},
      {"a$b", special},        {"a)", parenthesis},       {"(a", parenthesis},
      {"((a)", parenthesis},   {"\\", premature},         {"[a", premature},
      {"[", premature},        {"[^", premature},         {"[a\\", premature},
      {"\\x4", premature},     {"\\x", premature},        {"\\xg1", "Bad hexadecimal number"},
      {"\\x4g", "Bad hexadecimal number"},                {"\\0", registerNumber},
      {"\\v03", registerNumber}, {"\\v00", registerNumber}, {"\\va1", registerNumber},
      {"\\v3", premature},     {"\\v", premature},
      {std::string(100, '(') + std::string(100, ')'), complex},
  };
  for (ErrorCase const &c : cases) {
    Compiled compiled(c.pattern);
    ASSERT_NE(compiled.Error(), nullptr) << c.pattern;
    EXPECT_STREQ(compiled.Error(), c.message) << c.pattern;
  }
  Compiled deepest(std::string(99, '(') + "a" + std::string(99, ')'));
  EXPECT_EQ(deepest.Error(), nullptr);
}

TEST(RegexprCompileTest, LimitsPendingAlternativesAndJumpLengths) {
  std::string alternatives = "a";
  for (int i = 0; i < 100; ++i) alternatives += "|a";
  EXPECT_EQ(Compiled(alternatives).Error(), nullptr);
  EXPECT_STREQ(Compiled(alternatives + "|a").Error(), "Regular expression too complex");

  // A loop over more code than a 16-bit displacement can span.
  Compiled tooLong("(" + std::string(20000, 'a') + ")*");
  EXPECT_STREQ(tooLong.Error(), "Regular expression too complex");
  Compiled longButLocal(std::string(20000, 'a') + "*");
  EXPECT_EQ(longButLocal.Error(), nullptr);
  // The longest jumps that fit: 32,767 forward over the first alternative,
  // -32,768 back to the start of the loop.
  for (int n : {16382, 16383}) {
    SCOPED_TRACE(n);
    Compiled forward(std::string(static_cast<std::size_t>(n), 'a') + "|b"), back("(" + std::string(n - 3, 'a') + ")*");
    EXPECT_EQ(forward.Error() == nullptr, n == 16382);
    EXPECT_EQ(back.Error() == nullptr, n == 16382);
  }
  // Looking behind a $ at a lone backslash that ends the pattern reads
  // nothing beyond its end: the \) past it does not close a context.
  std::unique_ptr<char[]> const trailing(new char[4]{'a', '$', '\\', ')'});
  regexpr_buffer buffer = {};
  regexpr_set_syntax(kDefaultSyntax & ~SYNTAX_BARE_PARENS);
  EXPECT_STREQ(regexpr_compile(trailing.get(), 3, &buffer), "Badly placed special character");
  ZenoUtilFree(buffer.buffer);
}

TEST(RegexprCompileTest, KeepsThePartialProgramOnErrorAndGrowsBy256PlusTheRequest) {
  Compiled partial("ab\\0");
  EXPECT_STREQ(partial.Error(), "Bad match register number");
  EXPECT_EQ(partial.ProgramBytes(), Program({Char('a'), Char('b')}));
  // An alternative still open when a group is left open keeps its jump to the next instruction.
  Compiled unclosed("(a)|(b");
  EXPECT_STREQ(unclosed.Error(), "Badly placed parenthesis");
  EXPECT_EQ(unclosed.ProgramBytes(), Program({Jump(kBranch, 9), Op(kGroupOpen, 1), Char('a'), Op(kGroupClose, 1),
                                              Jump(kJump, 0), Op(kGroupOpen, 2), Char('b')}));
  EXPECT_GE(partial.Buffer()->allocated, 256);
  Compiled compiled(std::string(127, 'a') + "b");  // 256 bytes of op_char, then op_end
  EXPECT_EQ(compiled.Buffer()->used, 257);
  EXPECT_EQ(compiled.Buffer()->allocated, 256 + 256 + 1);
  Compiled set(std::string(111, 'a') + ".[a]");  // the set's 33 bytes end the first 256 exactly
  EXPECT_EQ(set.Buffer()->used, 257);
  EXPECT_EQ(set.Buffer()->allocated, 256 + 256 + 1) << "only op_end asked for more";
}

TEST(RegexprCompileTest, TranslatesPatternBytes) {
  unsigned char translate[256];
  for (int c = 0; c < 256; ++c) translate[c] = static_cast<unsigned char>(c == 'x' ? 'y' : c);
  regexpr_buffer buffer = {};
  buffer.translate = translate;
  regexpr_set_syntax(kDefaultSyntax);
  ASSERT_EQ(regexpr_compile("x[x]", 4, &buffer), nullptr);
  EXPECT_EQ(buffer.buffer[1], 'y');
  Bytes const set(buffer.buffer + 2, buffer.buffer + 2 + 33);
  EXPECT_EQ(Members(set), "y");
  ZenoUtilFree(buffer.buffer);
}

struct FirstMapCase {
  char const *pattern;
  int syntax;
  std::string map;
  int emptyMatch;
  int anchor;
};

TEST(RegexprCompileTest, FirstMapTellsWhereAMatchCanBegin) {
  FirstMapCase const cases[] = {
      {"abc", kDefaultSyntax, "Aa", 0, 0},
      {"ab", kDefaultSyntax & ~SYNTAX_FOLD_CASE, "a", 0, 0},
      {"[aB]", kDefaultSyntax, "Ba", 0, 0},
      {"(a|b)c", kDefaultSyntax, "ABab", 0, 0},
      {"x*y", kDefaultSyntax, "XYxy", 0, 0},
      {"x+y", kDefaultSyntax, "Xx", 0, 0},
      {"a*", kDefaultSyntax, "Aa", 1, 0},
      {"$", kDefaultSyntax, "\n", 2, 0},
      {"a?$", kDefaultSyntax, "\nAa", 2, 0},
      {"^a", kDefaultSyntax, "Aa", 0, 1},
      {"^a|b", kDefaultSyntax, "ABab", 0, 0},
      {"\\`a", kWordSyntax, "Aa", 0, 2},
      {"\\<1", kWordSyntax, "1", 0, 0},
      {".", kDefaultSyntax, AllBut("\n"), 0, 0},
      {"\\1", kDefaultSyntax, AllBut(""), 1, 0},
      {"()a", kDefaultSyntax, "Aa", 0, 0},
  };
  for (FirstMapCase const &c : cases) {
    Compiled compiled(c.pattern, c.syntax);
    compiled.AddFirstMap();
    regexpr_buffer const *buffer = compiled.Buffer();
    std::string map;
    for (int i = 0; i < 256; ++i) {
      if (buffer->first_map[i]) map += static_cast<char>(i);
    }
    EXPECT_EQ(map, c.map) << c.pattern;
    EXPECT_EQ(buffer->empty_match, c.emptyMatch) << c.pattern;
    EXPECT_EQ(buffer->anchor, c.anchor) << c.pattern;
    EXPECT_EQ(buffer->first_map_valid, 1);
  }
  // 62 word characters; \W takes the other 194, also behind an alternative.
  std::pair<char const *, int> const wordCases[] = {{"\\w", 62}, {"\\W", 194}, {"a|\\W", 196}};
  for (auto const &[pattern, members] : wordCases) {
    Compiled words(pattern, kWordSyntax);
    words.AddFirstMap();
    EXPECT_EQ(std::count(words.Buffer()->first_map, words.Buffer()->first_map + 256, 1), members) << pattern;
  }

  std::string longPattern;  // a program long enough that the map needs scratch space of its own
  for (int i = 0; i < 3000; ++i) longPattern += "a?";
  Compiled longProgram(longPattern + "b");
  ASSERT_GT(longProgram.Buffer()->used, 512);
  longProgram.AddFirstMap();
  EXPECT_EQ(std::count(longProgram.Buffer()->first_map, longProgram.Buffer()->first_map + 256, 1), 4);
}

TEST(RegexprCompileTest, StaticPatternIsKeptAcrossANullCompile) {
  // The only test that uses the library-wide pattern, so nothing was compiled yet.
  EXPECT_STREQ(regexpr_static_compile(nullptr), "Out of memory");
  regexpr_set_syntax(7);
  EXPECT_EQ(regexpr_set_syntax(kDefaultSyntax), 7) << "setting the syntax returns the former value";
  EXPECT_EQ(regexpr_static_compile("b+c"), nullptr);
  EXPECT_TRUE(regexpr_static_search("aabbc"));
  EXPECT_EQ(regexpr_static_compile(nullptr), nullptr);
  EXPECT_TRUE(regexpr_static_search("xbc"));
  EXPECT_FALSE(regexpr_static_search("cb"));
  EXPECT_STREQ(regexpr_static_compile("(b"), "Badly placed parenthesis");
}

}  // namespace
