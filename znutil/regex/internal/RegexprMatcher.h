// Internals shared by the regexpr matcher and searcher: the text in up to
// two parts, one match attempt under a work bound, and the choice of using
// the memo of failed states.
#ifndef ZNUTIL_REGEX_INTERNAL_REGEXPRMATCHER_H
#define ZNUTIL_REGEX_INTERNAL_REGEXPRMATCHER_H

#include <cstdint>

#include <znutil/regex/internal/RegexprMemo.h>
#include <znutil/regex/regexpr.h>

namespace znutil::detail {

struct RegexprPrefilter;

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

/// Instructions one call may still run.
struct RegexprWork {
  std::int64_t left;
  bool ranOut;
};

/// Bound on the instructions one call runs, so that a pattern that
/// backtracks without end, or exponentially, gives up with -2 in bounded time.
std::int64_t RegexprWorkBudget(RegexprText const &text, int programSize);
/// What a call may spend before it starts again with the memo.
std::int64_t RegexprTrialAllowance(RegexprText const &text, int programSize);

/// One match attempt at `start`, spending from `work`, using `memo` when not
/// null; as regexpr_match_parts.
int RegexprMatchAt(regexpr_buffer *buffer, RegexprText const &text, int start, regexpr_registers *registers,
                   RegexprWork *work, RegexprMemo *memo);

enum class RegexprMemoUse {
  kAdaptive,  ///< without it first; with it from the start again if that takes long
  kNever,
  kAlways,    ///< whenever the program suits it
};

/// Runs `attempt(RegexprWork *, RegexprMemo *)`, a match or a search, as
/// `use` says, spending from `work`. The memo gives the same results and
/// registers, so a first try without it that runs past a small allowance
/// can be dropped and the call made again with it.
template <typename Attempt>
int RegexprWithMemo(regexpr_buffer *buffer, RegexprText const &text, RegexprMemoUse use, RegexprWork *work,
                    Attempt attempt) {
  if (use == RegexprMemoUse::kAdaptive) {
    RegexprWork trial{RegexprTrialAllowance(text, buffer->used), false};
    int const result = attempt(&trial, nullptr);
    if (!trial.ranOut) return result;
  }
  RegexprMemo memo;
  bool const useMemo = use != RegexprMemoUse::kNever && buffer->buffer &&
                       memo.Prepare(buffer->buffer, buffer->used, text.total + 1);
  return attempt(work, useMemo ? &memo : nullptr);
}

/// regexpr_match_parts and regexpr_search_parts with the memo always or
/// never used, running at most `work` instructions; `*ranOut` tells
/// whether that ended the call; the search with the pair filter `filter`
/// when not null. For the differential fuzz targets.
ZNUTIL_API int RegexprMatchUsingMemo(regexpr_buffer *buffer, char const *part1, int size1, char const *part2,
                                     int size2, int start, regexpr_registers *registers, int stop, bool memo,
                                     std::int64_t work, bool *ranOut);
ZNUTIL_API int RegexprSearchUsingMemo(regexpr_buffer *buffer, char const *part1, int size1, char const *part2,
                                      int size2, int start, int range, regexpr_registers *registers, int stop,
                                      bool memo, std::int64_t work, bool *ranOut,
                                      RegexprPrefilter const *filter = nullptr);

}  // namespace znutil::detail

#endif  // ZNUTIL_REGEX_INTERNAL_REGEXPRMATCHER_H
