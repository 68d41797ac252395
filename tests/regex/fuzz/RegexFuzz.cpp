// libFuzzer target for the regexpr engine and ZnRegularExpression: any
// pattern under any syntax, compiled, then searched forwards and backwards,
// over one part and two, with and without the first-character map.
//
// Input: two bytes of syntax options, one byte of pattern length, the
// pattern, then the text.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/regex/ZnRegularExpression.h>
#include <znutil/regex/regexpr.h>

namespace {

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
