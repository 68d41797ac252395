// Services of the C run-time heap that the standard library lacks.
#ifndef ZNUTIL_PLATFORM_HEAP_H
#define ZNUTIL_PLATFORM_HEAP_H

#include <cstddef>

namespace znutil {
namespace platform {

/// Bytes usable in a block from malloc, calloc or realloc.
std::size_t UsableSize(void *block);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_HEAP_H
