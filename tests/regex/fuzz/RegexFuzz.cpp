// libFuzzer target for the regexpr engine and ZnRegularExpression: any
// pattern under any syntax, compiled, then searched forwards and backwards,
// over one part and two, with and without the first-character map, and
// with and without the pair filter.
//
// Input: two bytes of syntax options, one byte of pattern length, the
// pattern, then the text.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/regex/ZnRegularExpression.h>
#include <znutil/regex/internal/RegexprMatcher.h>
#include <znutil/regex/internal/RegexprPrefilter.h>
#include <znutil/regex/regexpr.h>

namespace {

using znutil::detail::RegexprPrefilter;

bool SameSearch(int result, regexpr_registers const &regs, int expected, regexpr_registers const &expectedRegs) {
  return result == expected && (result < 0 || std::memcmp(&regs, &expectedRegs, sizeof regs) == 0);
}

// The pair filter must change nothing, not even where the work bound runs
// out: searched with it and without, under the standard bound and under
// small ones, with the memo and without, the results, registers and
// whether the bound ran out agree exactly.
void CompareFiltered(regexpr_buffer *buffer, char const *text, int size) {
  RegexprPrefilter filter;
  if (!znutil::detail::BuildRegexprPrefilter(buffer->buffer, buffer->used, &filter)) return;
  regexpr_registers regs[2];
  int const plain = regexpr_search(buffer, text, size, 0, size, &regs[0]);
  int const filtered = znutil::detail::RegexprSearchPrefiltered(buffer, &filter, text, size, 0, size, &regs[1]);
  if (!SameSearch(filtered, regs[1], plain, regs[0])) std::abort();
  for (std::int64_t work : {std::int64_t{50}, std::int64_t{400}, std::int64_t{3000}}) {
    for (bool memo : {false, true}) {
      bool ranOut[2];
      int results[2];
      for (int i = 0; i < 2; ++i) {
        results[i] = znutil::detail::RegexprSearchUsingMemo(buffer, text, size, nullptr, 0, 0, size, &regs[i], size,
                                                            memo, work, &ranOut[i], i == 1 ? &filter : nullptr);
      }
      if (ranOut[0] != ranOut[1] || !SameSearch(results[1], regs[1], results[0], regs[0])) std::abort();
    }
  }
}

// Searches the text every way the engine offers. A search with the map must
// find what a search without it finds, unless the latter gave up.
void SearchAllWays(regexpr_buffer *buffer, char const *text, int size) {
  regexpr_registers regs;
  int const plain = regexpr_search(buffer, text, size, 0, size, &regs);
  regexpr_search(buffer, text, size, size, -size, &regs);
  regexpr_match(buffer, text, size, 0, &regs);
  int const split = size / 3;
  regexpr_search_parts(buffer, text, split, text + split, size - split, 0, size, &regs, size);
  regexpr_search_parts(buffer, text, split, text + split, size - split, size, -size, &regs, size - 1);

  unsigned char map[256];
  buffer->first_map = map;
  int const mapped = regexpr_search(buffer, text, size, 0, size, &regs);
  regexpr_search(buffer, text, size, size, -size, &regs);
  CompareFiltered(buffer, text, size);
  buffer->first_map = nullptr;
  if (plain != -2 && mapped != plain) std::abort();
}

void FuzzEngine(int syntax, char const *pattern, int patternSize, char const *text, int textSize) {
  regexpr_set_syntax(syntax);
  regexpr_buffer buffer = {};
  regexpr_compile(pattern, patternSize, &buffer);  // a partial program is searched too
  SearchAllWays(&buffer, text, textSize);
  ZenoUtilFree(buffer.buffer);
}

void FuzzClass(std::string const &pattern, std::string const &text) {
  ZnRegularExpression re(pattern.c_str());
  ZnRegularExpression copy(re);
  re.Matches(text.c_str());
  copy.Optimize();
  copy.Matches(text.c_str());
  ZnRegularExpression wildcard(ZnRegularExpression::DosToRegEx(pattern.c_str()));
  wildcard.Matches(text.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
  if (size < 3) return 0;
  int const syntax = (data[0] | data[1] << 8) & 511;
  std::size_t const patternSize = std::min<std::size_t>(data[2], size - 3);
  auto const *pattern = reinterpret_cast<char const *>(data + 3);
  char const *text = pattern + patternSize;
  std::size_t const textSize = size - 3 - patternSize;
  FuzzEngine(syntax, pattern, static_cast<int>(patternSize), text, static_cast<int>(textSize));
  FuzzClass(std::string(pattern, patternSize).c_str(), std::string(text, textSize).c_str());
  return 0;
}
