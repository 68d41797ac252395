// regexpr_search_parts: tries the matcher at successive start positions,
// skipping with the first-character map those where no match can begin; and
// the library-wide pattern of regexpr_static_compile.
#include <algorithm>
#include <cstring>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/regex/internal/RegexprMatcher.h>
#include <znutil/regex/internal/RegexprPrefilter.h>
#include <znutil/regex/internal/RegexprProgram.h>

namespace {

using namespace znutil::detail;

class Searcher {
 public:
  Searcher(regexpr_buffer *buffer, RegexprText const &text, regexpr_registers *registers, RegexprWork *work,
           RegexprMemo *memo, RegexprPrefilter const *filter)
      : buffer_(buffer), text_(text), registers_(registers),
        map_(buffer->empty_match == 1 ? nullptr : buffer->first_map), translate_(buffer->translate),
        filter_(translate_ ? nullptr : filter), work_(work), memo_(memo) {}

  int Run(int start, int range);

 private:
  bool InMap(unsigned char c) const { return map_[translate_ ? translate_[c] : c] != 0; }
  int SkipForward(int position, int range) const;
  int SkipBackward(int position, int range) const;
  bool AfterLineStart(int position) const { return position == 0 || text_.ByteAt(position - 1) == '\n'; }

  regexpr_buffer *buffer_;
  RegexprText const &text_;
  regexpr_registers *registers_;
  unsigned char const *map_;
  unsigned char const *translate_;
  RegexprPrefilter const *filter_;  // used with the map, on untranslated bytes
  RegexprWork *work_;
  RegexprMemo *memo_;  // shared by all start positions: a state fails whatever the start
};

// How many positions from `position` on, at most `range` and within its
// part, hold a byte that cannot begin a match, or (by the pair filter) a
// byte and its successor in the part that cannot.
int Searcher::SkipForward(int position, int range) const {
  if (position == text_.total) return 0;
  int const part = position < text_.size[0] ? 0 : 1;
  int const offset = part == 0 ? position : position - text_.size[0];
  int const inPart = text_.size[part] - offset;
  int const limit = std::min(range, inPart);
  unsigned char const *bytes = text_.part[part] + offset;
  int passed = 0;
  if (translate_) {
    while (passed < limit && !InMap(bytes[passed])) ++passed;
  } else {
    for (;; ++passed) {
      // Four bytes a step while none of them can begin a match.
      while (passed + 4 <= limit &&
             !(map_[bytes[passed]] | map_[bytes[passed + 1]] | map_[bytes[passed + 2]] | map_[bytes[passed + 3]])) {
        passed += 4;
      }
      while (passed < limit && !map_[bytes[passed]]) ++passed;
      if (passed == limit || !filter_ || passed + 1 == inPart || filter_->Allows(bytes[passed], bytes[passed + 1])) {
        break;
      }
    }
  }
  return passed;
}

// The same towards the start, never past the start of the position's part.
int Searcher::SkipBackward(int position, int range) const {
  if (position == text_.total) return 0;  // no byte to test at the end
  int const partStart = position < text_.size[0] ? 0 : text_.size[0];
  int passed = 0;
  while (passed < range && position - passed > partStart && !InMap(text_.ByteAt(position - passed))) ++passed;
  return passed;
}

int Searcher::Run(int start, int range) {
  std::int64_t span = range;
  int const direction = span < 0 ? -1 : 1;
  if (span < 0) span = -span;
  if (buffer_->anchor == 2) {
    if (start != 0) return -1;
    span = 0;
  }
  if (start < 0 || start > text_.total) return -1;
  // Positions past either end of the text cannot begin a match.
  int remaining = static_cast<int>(std::min<std::int64_t>(span, direction > 0 ? text_.total - start : start));
  int position = start;
  while (remaining >= 0) {
    if (map_) {
      int const passed = direction > 0 ? SkipForward(position, remaining) : SkipBackward(position, remaining);
      position += direction * passed;
      remaining -= passed;
      if (direction > 0 && position == text_.total && buffer_->empty_match == 0) return -1;
    }
    if (buffer_->anchor != 1 || AfterLineStart(position)) {
      int const length = RegexprMatchAt(buffer_, text_, position, registers_, work_, memo_);
      if (length >= 0) return position;
      if (length == -2) return -2;
    }
    --remaining;
    position += direction;
  }
  return -1;
}

regexpr_buffer g_staticBuffer;

int SearchText(regexpr_buffer *buffer, RegexprText const &text, int start, int range, regexpr_registers *registers,
               RegexprMemoUse use, RegexprWork *work, RegexprPrefilter const *filter) {
  // Not with the memo: there the attempts it would pass over fill rows of
  // the memo and so change what later attempts cost.
  return RegexprWithMemo(buffer, text, use, work, [&](RegexprWork *spend, RegexprMemo *memo) {
    return Searcher(buffer, text, registers, spend, memo, memo ? nullptr : filter).Run(start, range);
  });
}

// With the pair filter, the search runs under the work bound less what the
// attempts it passes over could have spent. Finishing under that, it
// returns what the search without the filter returns; otherwise that search
// is made instead, so that the bound runs out exactly where it would.
int SearchParts(regexpr_buffer *buffer, char const *part1, int size1, char const *part2, int size2, int start,
                int range, regexpr_registers *registers, int stop, RegexprMemoUse use, RegexprWork *work,
                RegexprPrefilter const *filter) {
  RegexprText text;
  if (!MakeRegexprText(part1, size1, part2, size2, stop, &text)) return -1;
  if (buffer->first_map && !buffer->first_map_valid) regexpr_compile_first_map(buffer);
  RegexprWork standard{RegexprWorkBudget(text, buffer->used), false};  // unless the caller sets one
  RegexprWork *const spend = work ? work : &standard;
  if (filter && buffer->first_map && buffer->first_map_valid) {
    std::int64_t const reserve = (std::int64_t{text.total} + 1) * filter->attemptCost;
    RegexprWork rest{spend->left - reserve, false};
    if (rest.left > 0) {
      int const result = SearchText(buffer, text, start, range, registers, use, &rest, filter);
      if (!rest.ranOut) {
        spend->left = rest.left + reserve;
        return result;
      }
    }
  }
  return SearchText(buffer, text, start, range, registers, use, spend, nullptr);
}

}  // namespace

int znutil::detail::RegexprSearchUsingMemo(regexpr_buffer *buffer, char const *part1, int size1, char const *part2,
                                           int size2, int start, int range, regexpr_registers *registers, int stop,
                                           bool memo, std::int64_t work, bool *ranOut, RegexprPrefilter const *filter) {
  RegexprMemoUse const use = memo ? RegexprMemoUse::kAlways : RegexprMemoUse::kNever;
  RegexprWork spent{work, false};
  int const result =
      SearchParts(buffer, part1, size1, part2, size2, start, range, registers, stop, use, &spent, filter);
  *ranOut = spent.ranOut;
  return result;
}

int regexpr_search_parts(regexpr_buffer *buffer, char const *part1, int size1, char const *part2, int size2,
                         int start, int range, regexpr_registers *registers, int stop) {
  return SearchParts(buffer, part1, size1, part2, size2, start, range, registers, stop, RegexprMemoUse::kAdaptive,
                     nullptr, nullptr);
}

int znutil::detail::RegexprSearchPrefiltered(regexpr_buffer *buffer, RegexprPrefilter const *filter,
                                             char const *text, int size, int start, int range,
                                             regexpr_registers *registers) {
  return SearchParts(buffer, text, size, nullptr, 0, start, range, registers, size, RegexprMemoUse::kAdaptive,
                     nullptr, filter);
}

int regexpr_search(regexpr_buffer *buffer, char const *text, int size, int start, int range,
                   regexpr_registers *registers) {
  return regexpr_search_parts(buffer, text, size, nullptr, 0, start, range, registers, size);
}

char const *regexpr_static_compile(char const *pattern) {
  if (!pattern) return g_staticBuffer.buffer ? nullptr : kRegexprOutOfMemory;
  if (!g_staticBuffer.first_map) {
    g_staticBuffer.first_map = static_cast<unsigned char *>(ZenoUtilAlloc(256));
    if (!g_staticBuffer.first_map) return kRegexprOutOfMemory;
  }
  return regexpr_compile(pattern, static_cast<int>(std::strlen(pattern)), &g_staticBuffer);
}

int regexpr_static_search(char const *text) {
  if (!g_staticBuffer.buffer) return 0;
  int const size = static_cast<int>(std::strlen(text));
  return regexpr_search_parts(&g_staticBuffer, text, size, nullptr, 0, 0, size, nullptr, size) >= 0;
}
