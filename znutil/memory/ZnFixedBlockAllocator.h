// ZnFixedBlockAllocator: the small-object allocator beneath every library
// object and string buffer.
//
//   void *p = ZnFixedBlockAllocator::Alloc(24);
//   ZnFixedBlockAllocator::Free(p);   // on any thread
//
// Each thread allocates from a heap of its own, in size classes of 4-byte
// steps below 1024 bytes, so that allocation and a thread's own frees take no
// lock; other threads' frees take none either, but one compare-and-swap.
// Larger requests go to the C heap.
// Every block is 16-byte aligned and has a 16-byte header before it: byte 0
// state tag (5 in use, 6 large, 8 free), byte 1 heap index, bytes 2-3 size
// class index, bytes 8-15 the free-list link. Memory is never given back to
// the system; a thread that ends through Shutdown leaves its heap, free
// lists and all, to the next thread that needs one.
#ifndef ZNUTIL_MEMORY_ZNFIXEDBLOCKALLOCATOR_H
#define ZNUTIL_MEMORY_ZNFIXEDBLOCKALLOCATOR_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnFixedBlockAllocator {
 public:
  /// Binds the calling thread to a new heap if it has none; unlike Alloc it
  /// never adopts an orphaned heap.
  ZnFixedBlockAllocator();
  ~ZnFixedBlockAllocator() {}
  ZnFixedBlockAllocator &operator=(ZnFixedBlockAllocator const &) { return *this; }

  /// A block of at least `size` bytes: size / 4 * 4 + 4 below 1024, so a
  /// multiple of 4 gets 4 bytes more than asked; 0 gets 4.
  static void *Alloc(unsigned long size);
  /// Gives back a block from Alloc, on any thread; null is allowed.
  static void Free(void *block);
  /// Unbinds the calling thread from its heap and leaves the heap to be
  /// adopted; its live blocks stay valid.
  static void Shutdown();

  /// Number of slots in the table of thread heaps; a heap created when all
  /// are taken stays unregistered and claims index 0.
  static constexpr unsigned kHeapTableSize = 256;
};

#endif  // ZNUTIL_MEMORY_ZNFIXEDBLOCKALLOCATOR_H
