// Class-level operator new and delete over ZnFixedBlockAllocator.
//
//   class ZnThing {
//    public:
//     ZNUTIL_FIXED_BLOCK_OPERATORS
//     ...
//   };
//
// Objects of such a class, and of every class derived from it, come from the
// calling thread's fixed-block heap and may be deleted on any thread.
#ifndef ZNUTIL_MEMORY_ZNFIXEDBLOCKOPERATORS_H
#define ZNUTIL_MEMORY_ZNFIXEDBLOCKOPERATORS_H

#include <cstddef>

#include <znutil/memory/ZnFixedBlockAllocator.h>

#define ZNUTIL_FIXED_BLOCK_OPERATORS                                                        \
  static void *operator new(std::size_t size) { return ZnFixedBlockAllocator::Alloc(size); } \
  static void *operator new[](std::size_t size) { return ZnFixedBlockAllocator::Alloc(size); } \
  static void operator delete(void *block) { ZnFixedBlockAllocator::Free(block); }          \
  static void operator delete[](void *block) { ZnFixedBlockAllocator::Free(block); }

#endif  // ZNUTIL_MEMORY_ZNFIXEDBLOCKOPERATORS_H
