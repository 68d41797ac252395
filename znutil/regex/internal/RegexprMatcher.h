// Internals shared by the regexpr matcher and searcher: the text in up to
// two parts, and one match attempt under a work bound.
#ifndef ZNUTIL_REGEX_INTERNAL_REGEXPRMATCHER_H
#define ZNUTIL_REGEX_INTERNAL_REGEXPRMATCHER_H

#include <cstdint>

#include <znutil/regex/regexpr.h>

namespace znutil::detail {

/// The text as the matcher sees it: cut at the stop offset, and with an
/// empty first part dropped, so that a second part is never empty and a
/// first part is empty only when the whole text is.
struct RegexprText {
  unsigned char const *part[2];
  int size[2];
  bool twoParts;
  int total;

  unsigned char ByteAt(int offset) const { return offset < size[0] ? part[0][offset] : part[1][offset - size[0]]; }
};

/// Builds the text from the arguments of the exported calls; false when they
/// describe no text (a negative size or stop, or a null part with bytes).
bool MakeRegexprText(char const *part1, int size1, char const *part2, int size2, int stop, RegexprText *text);

/// Bound on the failures and jumps of one call, so that a pattern that
/// backtracks without end, or exponentially, gives up with -2 in bounded time.
std::int64_t RegexprWorkBudget(RegexprText const &text, int programSize);

/// One match attempt at `start`, spending from `budget`; as regexpr_match_parts.
int RegexprMatchAt(regexpr_buffer *buffer, RegexprText const &text, int start, regexpr_registers *registers,
                   std::int64_t *budget);

}  // namespace znutil::detail

#endif  // ZNUTIL_REGEX_INTERNAL_REGEXPRMATCHER_H
