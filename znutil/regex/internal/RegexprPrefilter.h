// The pair filter: which second bytes can follow each first byte at the
// start of a match. The search uses it, after the first-character map, to
// pass over start positions where the matcher would fail on the second
// byte (the first letters of an alternation's words are often common, the
// first two rarely are).
#ifndef ZNUTIL_REGEX_INTERNAL_REGEXPRPREFILTER_H
#define ZNUTIL_REGEX_INTERNAL_REGEXPRPREFILTER_H

#include <cstdint>

#include <znutil/platform/Export.h>
#include <znutil/regex/regexpr.h>

namespace znutil::detail {

struct RegexprPrefilter {
  std::uint64_t follow[256][4];  ///< bit `second` of row `first`: a match may begin with the two
  /// The most instructions an attempt at a start the filter passes over
  /// would have run. The search keeps that much of its work bound in
  /// reserve for each position, so that passing over them never changes
  /// whether the bound runs out.
  int attemptCost;

  bool Allows(unsigned char first, unsigned char second) const {
    return (follow[first][second >> 6] >> (second & 63)) & 1;
  }
};

/// Builds the filter of a program, under the option value its first map
/// was built with. False when the program does not suit: up to the second
/// byte it loops, can match empty, refers back, or costs too much to
/// account for exactly.
ZNUTIL_API bool BuildRegexprPrefilter(unsigned char const *program, int used, RegexprPrefilter *filter);

/// regexpr_search with the filter in front of the first-character map
/// (null: none). Every result and register is that of regexpr_search.
ZNUTIL_API int RegexprSearchPrefiltered(regexpr_buffer *buffer, RegexprPrefilter const *filter, char const *text,
                                        int size, int start, int range, regexpr_registers *registers);

}  // namespace znutil::detail

#endif  // ZNUTIL_REGEX_INTERNAL_REGEXPRPREFILTER_H
