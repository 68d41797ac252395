// ZnMemBlock: one contiguous range of reserved address space, committed a
// page at a time, growing up from its base or down from its end.
//
//   void *first = nullptr;
//   ZnMemBlock block(1 << 20, ZnMemBlockGrowUp, 4096, &first, nullptr, nullptr);
//   void *more = block.Alloc(4096, nullptr);
//
// A downward block keeps an inaccessible guard page below what it has
// committed, and counts the guard in its committed total. Assignment copies
// all fields, so two objects may own one reservation: the caller decides
// which of them is destroyed.
#ifndef ZNUTIL_MEMORY_ZNMEMBLOCK_H
#define ZNUTIL_MEMORY_ZNMEMBLOCK_H

#include <atomic>

#include <znutil/platform/Export.h>

enum ZnMemBlockType { ZnMemBlockGrowUp = 0, ZnMemBlockGrowDown = 1 };

class ZNUTIL_API ZnMemBlock {
 public:
  /// Reserves `reserveBytes`; with a non-null `ppAddress` and a positive
  /// `commitBytes`, also commits that much and stores its address there.
  /// Each non-null out-pointer first receives the base, 0 and the size
  /// reserved.
  ZnMemBlock(unsigned int reserveBytes, ZnMemBlockType type, unsigned int commitBytes, void **ppAddress,
             unsigned int *pCommitted, unsigned int *pReserved);
  /// Releases the whole reservation.
  ~ZnMemBlock();
  ZnMemBlock(ZnMemBlock const &) = delete;
  ZnMemBlock &operator=(ZnMemBlock const &) = default;

  /// Commits `size` more bytes (whole pages, plus a guard page when growing
  /// down). Null when the reservation has no room; `pGot` then holds the
  /// bytes still free, or 0 if the system refused.
  void *Alloc(unsigned int size, unsigned int *pGot);
  /// Decommits `size` bytes rounded down to whole pages from the committed
  /// end; yields the top of the block.
  void *Dealloc(unsigned int size, unsigned int *pGot);
  /// Turns the page at the top back into a guard page after it has fired.
  void ResetGuardPage();

  /// The system page size, fetched once.
  static unsigned long GetPageSize();

  void *GetAddress() const { return pBase; }
  unsigned int TotalReserved() const { return udwTotalReserved; }
  unsigned int TotalCommitted() const { return udwTotalCommitted; }
  /// Base plus committed bytes. In a downward block this is not the lowest
  /// committed address; that is deliberate.
  void *GetTopOfBlock() const { return static_cast<char *>(pBase) + udwTotalCommitted; }

 private:
  unsigned int RoundUpToPages(unsigned int size) const;
  void *CommitUp(unsigned int size);
  void *CommitDown(unsigned int size);

  void *pBase;
  unsigned int udwTotalReserved;
  unsigned int udwTotalCommitted;
  void *pTop;
  ZnMemBlockType eType;

  // Fetched once; threads that make their first chunks at the same moment
  // may both store the same value.
  static std::atomic<unsigned long> dwPageSize;
};

#endif  // ZNUTIL_MEMORY_ZNMEMBLOCK_H
