// Differential libFuzzer target for the memo of failed states: any pattern
// under any syntax is compiled twice and each copy is searched and matched
// the same ways, one with the memo and one without. Results, registers and
// the programs (which matching rewrites) must agree wherever the run
// without the memo finished within its work limit.
//
// Input: two bytes of syntax options (the top bit adds a first-character
// map), one byte of pattern length, the pattern, then the text.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/regex/internal/RegexprMatcher.h>
#include <znutil/regex/regexpr.h>

namespace {

using znutil::detail::RegexprMatchUsingMemo;
using znutil::detail::RegexprSearchUsingMemo;

constexpr std::int64_t kWork = 200000;

struct Run {
  regexpr_buffer buffer = {};
  unsigned char map[256];
  regexpr_registers registers;
  bool ranOut = false;
};

// One way of running the engine: (buffer, text, size, registers, memo, ranOut) -> result.
using Way = int (*)(regexpr_buffer *, char const *, int, regexpr_registers *, bool, bool *);

int Forward(regexpr_buffer *b, char const *t, int n, regexpr_registers *r, bool memo, bool *out) {
  return RegexprSearchUsingMemo(b, t, n, nullptr, 0, 0, n, r, n, memo, kWork, out);
}
int Backward(regexpr_buffer *b, char const *t, int n, regexpr_registers *r, bool memo, bool *out) {
  return RegexprSearchUsingMemo(b, t, n, nullptr, 0, n, -n, r, n, memo, kWork, out);
}
int TwoParts(regexpr_buffer *b, char const *t, int n, regexpr_registers *r, bool memo, bool *out) {
  return RegexprSearchUsingMemo(b, t, n / 3, t + n / 3, n - n / 3, 0, n, r, n, memo, kWork, out);
}
int MatchAtStart(regexpr_buffer *b, char const *t, int n, regexpr_registers *r, bool memo, bool *out) {
  return RegexprMatchUsingMemo(b, t, n / 2, t + n / 2, n - n / 2, 0, r, n, memo, kWork, out);
}

// A run cut short by its work limit may leave loops of the program not yet
// rewritten, so from then on only results and registers are compared.
void Compare(Run runs[2], int const results[2], bool *programsAlike) {
  if (runs[0].ranOut || runs[1].ranOut) {
    *programsAlike = false;
    return;
  }
  if (results[0] != results[1]) std::abort();
  if (*programsAlike && (runs[0].buffer.used != runs[1].buffer.used ||
                         std::memcmp(runs[0].buffer.buffer, runs[1].buffer.buffer,
                                     static_cast<std::size_t>(runs[0].buffer.used)) != 0)) {
    std::abort();
  }
  if (results[0] >= 0 && std::memcmp(&runs[0].registers, &runs[1].registers, sizeof(regexpr_registers)) != 0) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size) {
  if (size < 3) return 0;
  int const syntax = (data[0] | data[1] << 8) & 511;
  bool const withMap = (data[1] & 0x80) != 0;
  int const patternSize = static_cast<int>(std::min<std::size_t>(data[2], size - 3));
  auto const *pattern = reinterpret_cast<char const *>(data + 3);
  char const *text = pattern + patternSize;
  int const textSize = static_cast<int>(size - 3 - static_cast<std::size_t>(patternSize));

  regexpr_set_syntax(syntax);
  Run runs[2];
  for (Run &run : runs) {
    regexpr_compile(pattern, patternSize, &run.buffer);  // a partial program is run too
    run.buffer.first_map = withMap ? run.map : nullptr;
  }
  bool programsAlike = true;
  for (Way way : {Forward, Backward, TwoParts, MatchAtStart}) {
    int results[2];
    for (int memo = 0; memo < 2; ++memo) {
      Run &run = runs[memo];
      std::memset(&run.registers, 0x5A, sizeof run.registers);
      results[memo] = way(&run.buffer, text, textSize, &run.registers, memo == 1, &run.ranOut);
    }
    Compare(runs, results, &programsAlike);
  }
  for (Run &run : runs) ZenoUtilFree(run.buffer.buffer);
  return 0;
}
