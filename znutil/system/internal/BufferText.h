// Text that a Windows call writes into a buffer of a fixed size.
#ifndef ZNUTIL_SYSTEM_INTERNAL_BUFFERTEXT_H
#define ZNUTIL_SYSTEM_INTERNAL_BUFFERTEXT_H

#include <cstddef>
#include <string>

#include <znutil/text/ZnString.h>

namespace znutil {
namespace detail {

/// The text if it fits a buffer of `size` characters with its terminator;
/// empty otherwise, where the Windows call fails and leaves the buffer unset.
inline ZnString TextWithin(std::string const &text, std::size_t size) {
  return text.size() < size ? ZnString(text.c_str()) : ZnString();
}

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_SYSTEM_INTERNAL_BUFFERTEXT_H
