// Random bytes from the system's entropy source.
#ifndef ZNUTIL_PLATFORM_RANDOM_H
#define ZNUTIL_PLATFORM_RANDOM_H

#include <cstddef>

namespace znutil {
namespace platform {

/// Fills `buffer` with `size` random bytes.
void RandomBytes(void *buffer, std::size_t size);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_RANDOM_H
