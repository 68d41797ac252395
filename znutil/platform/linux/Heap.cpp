// Run-time heap services from glibc.
#include <znutil/platform/Heap.h>

#include <malloc.h>

namespace znutil {
namespace platform {

std::size_t UsableSize(void *block) { return malloc_usable_size(block); }

}  // namespace platform
}  // namespace znutil
