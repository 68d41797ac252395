// The bytes of a ZnString, and a ZnString from bytes that may lack a
// terminator. Not part of the interface.
#ifndef ZNUTIL_VALUES_INTERNAL_STRINGBYTES_H
#define ZNUTIL_VALUES_INTERNAL_STRINGBYTES_H

#include <cstddef>

#include <znutil/text/ZnString.h>

namespace znutil {
namespace detail {

/// The characters of `text`, `text.Length()` of them.
inline char const *CharactersOf(ZnString const &text) { return text.Chars(); }

/// The text before the first zero byte among the first `limit` bytes, or
/// all `limit` bytes when none of them is zero.
ZnString TextOfBytes(void const *bytes, std::size_t limit);

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_VALUES_INTERNAL_STRINGBYTES_H
