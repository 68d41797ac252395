// Bounded, alignment-free access to the bytes of an executable image.
//
// An image read from a file is untrusted: its values may stand at any
// address and its offsets may point anywhere. Values are copied out with
// memcpy, and every range is checked against the bytes that exist before it
// is read.
#ifndef ZNUTIL_SYSTEM_INTERNAL_IMAGEBYTES_H
#define ZNUTIL_SYSTEM_INTERNAL_IMAGEBYTES_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace detail {

inline WORD ReadWord(void const *at) {
  WORD value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

inline DWORD ReadDword(void const *at) {
  DWORD value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

inline void WriteDword(void *at, DWORD value) { std::memcpy(at, &value, sizeof value); }

/// True when [at, at + bytes) lies inside [begin, end). Compares addresses
/// as numbers, so `at` may be any value computed from a file.
inline bool Within(void const *at, std::size_t bytes, void const *begin, void const *end) {
  auto const where = reinterpret_cast<std::uintptr_t>(at);
  auto const first = reinterpret_cast<std::uintptr_t>(begin), last = reinterpret_cast<std::uintptr_t>(end);
  return where >= first && where <= last && bytes <= last - where;
}

/// The address rounded up to a multiple of 4.
inline unsigned char *AlignUp4(unsigned char *at) {
  auto const where = reinterpret_cast<std::uintptr_t>(at);
  return at + ((4 - where % 4) % 4);
}

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_SYSTEM_INTERNAL_IMAGEBYTES_H
