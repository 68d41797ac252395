#include <znutil/system/internal/VersionBlock.h>

namespace znutil {
namespace detail {

bool ReadVersionBlock(unsigned char *at, unsigned char const *limit, VersionBlock *block) {
  constexpr std::size_t kHeader = 3 * sizeof(WORD);
  if (!Within(at, kHeader, at, limit)) return false;
  unsigned char *key = at + kHeader;
  for (unsigned char *unit = key; Within(unit, sizeof(WORD), at, limit); unit += sizeof(WORD)) {
    if (ReadWord(unit) != 0) continue;
    *block = VersionBlock{at, ReadWord(at), ReadWord(at + sizeof(WORD)), key, unit + sizeof(WORD)};
    return true;
  }
  return false;
}

}  // namespace detail
}  // namespace znutil
