// 16-bit text, the `unsigned short` strings of the interface.
//
// A unit converts to one byte and a byte to one unit, as Latin-1: a unit
// below 256 is that byte, any other becomes '?'. Conversion never changes
// the length. These stand in for wcslen, wcstombs, mbstowcs and _wcsicmp,
// whose wchar_t is 32 bits wide on Linux.
#ifndef ZNUTIL_PLATFORM_WIDETEXT_H
#define ZNUTIL_PLATFORM_WIDETEXT_H

#include <cstddef>

namespace znutil {
namespace platform {

/// Units before the terminating zero.
std::size_t WideLength(unsigned short const *text);

/// Converts at most `count` units, stopping after a zero unit (which is
/// copied); returns the units converted before the zero.
std::size_t WideToNarrow(char *target, unsigned short const *source, std::size_t count);

/// Converts at most `count` bytes, stopping after a zero byte (which is
/// copied); returns the bytes converted before the zero.
std::size_t NarrowToWide(unsigned short *target, char const *source, std::size_t count);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_WIDETEXT_H
