// One block of a version resource: wLength, wValueLength and wType as
// 16-bit fields, then a zero-terminated 16-bit key, then the value.
#ifndef ZNUTIL_SYSTEM_INTERNAL_VERSIONBLOCK_H
#define ZNUTIL_SYSTEM_INTERNAL_VERSIONBLOCK_H

#include <znutil/platform/WinTypes.h>
#include <znutil/system/internal/ImageBytes.h>

namespace znutil {
namespace detail {

struct VersionBlock {
  unsigned char *pStart;
  WORD wLength;
  WORD wValueLength;
  /// The key's first unit and the byte behind its terminator.
  unsigned char *pKey;
  unsigned char *pKeyEnd;

  /// Where the value, or the first child, begins: behind the key, rounded
  /// up to a multiple of 4 of the address.
  unsigned char *Value() const { return AlignUp4(pKeyEnd); }
  /// The next block at the same level. Deliberately wLength + 2, not the
  /// format's rounding to 4: the walk relies on the sizes of the blocks
  /// this library's own programs write, and finds nothing behind a block of
  /// another size.
  unsigned char *Next() const { return pStart + wLength + 2; }
};

/// Reads the block at `at`; false unless its header and its whole key,
/// terminator included, lie before `limit`.
bool ReadVersionBlock(unsigned char *at, unsigned char const *limit, VersionBlock *block);

/// Compares the block's key with `key`, ignoring the case of ASCII letters
/// as _wcsicmp does. `Unit` is any type of 16-bit text units.
template <typename Unit>
bool KeyIs(VersionBlock const &block, Unit const *key) {
  auto const lower = [](unsigned unit) { return unit >= 'A' && unit <= 'Z' ? unit + ('a' - 'A') : unit; };
  for (unsigned char const *at = block.pKey;; at += 2, ++key) {
    unsigned const unit = lower(ReadWord(at));
    if (unit != lower(static_cast<WORD>(*key))) return false;
    if (unit == 0) return true;
  }
}

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_SYSTEM_INTERNAL_VERSIONBLOCK_H
