// The pair filter: which programs get one, and that a search with it finds,
// registers and gives up exactly as the search without it.
#include <cstdint>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include <znutil/regex/internal/RegexprMatcher.h>
#include <znutil/regex/internal/RegexprPrefilter.h>

#include "RegexprTestSupport.h"

namespace {

using regex_test::Compiled;
using znutil::detail::RegexprPrefilter;

struct Filtered {
  explicit Filtered(std::string const &pattern) : compiled(pattern) {
    compiled.AddFirstMap();
    suits = znutil::detail::BuildRegexprPrefilter(compiled.Buffer()->buffer, compiled.Buffer()->used, &filter);
  }
  // Searches under `work` with the filter or without; the result, whether
  // the bound ran out, and the registers of a match.
  std::string Search(std::string const &text, bool withFilter, std::int64_t work) {
    regexpr_registers regs;
    std::memset(&regs, 0, sizeof regs);
    bool ranOut = false;
    int const size = static_cast<int>(text.size());
    int const result = znutil::detail::RegexprSearchUsingMemo(compiled.Buffer(), text.data(), size, nullptr, 0, 0,
                                                              size, &regs, size, false, work, &ranOut,
                                                              withFilter ? &filter : nullptr);
    std::string outcome = std::to_string(result) + (ranOut ? " ran out" : "");
    for (int r = 0; result >= 0 && r < REGEXPR_REGISTERS; ++r) {
      outcome += " " + std::to_string(regs.start[r]) + "-" + std::to_string(regs.end[r]);
    }
    return outcome;
  }

  Compiled compiled;
  RegexprPrefilter filter;
  bool suits = false;
};

TEST(RegexprPrefilterTest, SuitsProgramsWithoutLoopsBeforeTheSecondByte) {
  for (char const *pattern : {"river|mountain|forest", "gr[ae]y", "a(b)c", "x$", "ab*c", "^ab", "a|b", "(x)\\1"}) {
    EXPECT_TRUE(Filtered(pattern).suits) << pattern;
  }
  for (char const *pattern : {"a*b", "(a|)*b", "a?", "a(b?)*c"}) {
    EXPECT_FALSE(Filtered(pattern).suits) << pattern;
  }
  RegexprPrefilter none;
  unsigned char const program[] = {0};
  EXPECT_FALSE(znutil::detail::BuildRegexprPrefilter(nullptr, 8, &none)) << "no program";
  EXPECT_FALSE(znutil::detail::BuildRegexprPrefilter(program, 0, &none)) << "an empty program";
  Filtered words("river|ocean");
  EXPECT_TRUE(words.filter.Allows('R', 'i'));
  EXPECT_TRUE(words.filter.Allows('o', 'C'));
  EXPECT_FALSE(words.filter.Allows('o', 'f'));
  Filtered lineEnd("$|ab");
  ASSERT_TRUE(lineEnd.suits);
  EXPECT_TRUE(lineEnd.filter.Allows('\n', 'q'));  // an empty match before a line end
  EXPECT_FALSE(lineEnd.filter.Allows('a', 'q'));
}

// Matches at a part's last byte, after line ends, in groups; and a bound so
// small that the search without the filter runs out where the filtered one
// alone would not: the filtered search must run out too.
TEST(RegexprPrefilterTest, FindsAndGivesUpAsTheSearchWithout) {
  struct Case {
    char const *pattern;
    char const *text;
  } const cases[] = {
      {"river|(oc)ean|x$", "of or over ocean"}, {"river|(oc)ean|x$", "ox\nx"},    {"ab|c", "aaaac"},
      {"^(b)c|a$", "xbc\nbc"},                 {"gr[ae]y", "great gravy grey"}, {"ab|cd", "a"},
  };
  for (Case const &c : cases) {
    Filtered filtered(c.pattern);
    ASSERT_TRUE(filtered.suits) << c.pattern;
    for (std::int64_t work = 1; work < 200; ++work) {
      ASSERT_EQ(filtered.Search(c.text, true, work), filtered.Search(c.text, false, work))
          << c.pattern << " over " << c.text << " under " << work;
    }
    int const size = static_cast<int>(std::strlen(c.text));
    int const withFilter = znutil::detail::RegexprSearchPrefiltered(filtered.compiled.Buffer(), &filtered.filter,
                                                                    c.text, size, 0, size, nullptr);
    EXPECT_EQ(withFilter, filtered.compiled.Search(c.text)) << c.pattern;
  }
}

}  // namespace
