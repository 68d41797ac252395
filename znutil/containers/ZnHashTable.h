// ZnHashTable: the base of every keyed lookup, a table of ZnHashTableItem
// objects, each of which knows its own hash, key and equality.
//
//   class IntTable : public ZnHashTable {   // derived classes expose the
//    public:                                // typed add, find and delete
//     bool Add(IntItem *item) { ZnHashTableItem *old; return AddItem(item, old) == ZnHTSuccess; }
//   };
//
// A bucket is a run of inline cells, then an overflow chain of nodes from
// ZnFixedBlockAllocator. The cells lie in one array: the first cell of every
// bucket together, then the other cells bucket by bucket.
// Cells are kept packed: a bucket fills from slot 0 without holes, and its
// chain exists only behind a full bucket. Each cell and node keeps its
// item's hash, so that a probe calls Equals only on a matching hash, and a
// resize places the items again without asking them for their hashes: an
// item's hash and equality must not change while it is stored, and equal
// items must hash alike. Bucket counts are primes from a
// sieve table. The table grows only once MakeDynamic has been called, and
// then doubles whenever the item count reaches the threshold.
//
// A walk with a ZnListContext sets the context's data to each item's value
// and its key to the item's key; the position is the context's owned data.
// A stored null value therefore reads as the end of the walk (deliberate).
// Any change to the table during a walk leaves the walk undefined.
//
// The table never destroys an item by itself except in Clear and ClearItems;
// derived classes call ClearItems(nullptr) in their destructors.
#ifndef ZNUTIL_CONTAINERS_ZNHASHTABLE_H
#define ZNUTIL_CONTAINERS_ZNHASHTABLE_H

#include <cstdint>

#include <znutil/containers/ZnHashTableDeleteCallback.h>
#include <znutil/containers/ZnHashTableItem.h>
#include <znutil/containers/ZnHashTableIter.h>
#include <znutil/containers/ZnHashTableStatistics.h>
#include <znutil/containers/ZnListContext.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

/// The result of the table's item operations.
enum ZnHTErrorCode { ZnHTSuccess = 0, ZnHTExists = 1, ZnHTNotFound = 2 };

class ZNUTIL_API ZnHashTable {
 public:
  /// A node of a bucket's overflow chain.
  struct ZnChainNode {
    ZnHashTableItem *pItem;
    ZnChainNode *pNext;
    ZnULong udwHash;  ///< pItem's hash
  };

  /// size is rounded up to a bucket count by SearchForClosestPrime; slots
  /// below 1 are taken as 1. The table starts static.
  explicit ZnHashTable(int size = 53, int slots = 4);
  /// Not copyable: a member-wise copy would share and then twice free the
  /// arrays. Copy() duplicates a table.
  ZnHashTable(ZnHashTable const &) = delete;
  ZnHashTable &operator=(ZnHashTable const &) = delete;
  /// Frees chain nodes and arrays; does not destroy items.
  virtual ~ZnHashTable();

  /// Turns growth on, at bucket count * percent / 100 items (relative to the
  /// buckets, not the cells); a threshold below 1 is taken as 1.
  void MakeDynamic(int percent);
  /// Calls iterator with each item, bucket by bucket, cells before chain;
  /// false stops the walk.
  void Iterate(ZnHashTableIter &iterator, void *data) const;
  /// Fills stats: shape always, a histogram of cells and chain items with
  /// flag 2, the item count with flag 1.
  void Statistics(ZnHashTableStatistics *stats, ZnULong flags) const;

  /// Builds the sieve table of primes below 10000; later calls do nothing.
  static void InitializePrimeTable();
  /// The first prime at or above n (upward only, despite the name); 1 for n
  /// below 1, 10000 for 9974 to 9999, and n itself above 9999, prime or not.
  static int SearchForClosestPrime(int n);

  /// ClearItems.
  virtual void Clear(ZnHashTableDeleteCallback *callback);
  /// Begins a walk; returns the first item's value. With no items returns
  /// null and leaves the context as it was.
  virtual void *GetFirst(ZnListContext &context) const;
  /// The value at the context.
  virtual void *GetCurrent(ZnListContext &context) const;
  /// The next item's value; at the end data and key become null.
  virtual void *GetNext(ZnListContext &context) const;
  /// Clears this table (destroying its items), then adds a clone of each
  /// item of other.
  virtual void Copy(ZnHashTable &other);

 protected:
  /// Stores item; ZnHTExists, with the stored equal item in existing and
  /// the table unchanged, if its key is taken.
  ZnHTErrorCode AddItem(ZnHashTableItem *item, ZnHashTableItem *&existing);
  /// Stores item in place of an equal one, which goes to old, or adds it;
  /// always ZnHTSuccess. The caller destroys old.
  ZnHTErrorCode ReplaceItem(ZnHashTableItem *item, ZnHashTableItem *&old);
  /// Removes the item equal to the probe into removed, keeping the bucket
  /// packed; ZnHTNotFound if none. The caller destroys removed.
  ZnHTErrorCode DeleteItem(ZnHashTableItem *probe, ZnHashTableItem *&removed);
  /// ZnHTSuccess with the item equal to the probe in found, or ZnHTNotFound.
  ZnHTErrorCode FindItem(ZnHashTableItem *probe, ZnHashTableItem *&found) const;
  /// Looks for the probe. ZnHTExists on a hit: slot is its cell, or -1 with
  /// previous at the chain node before it. Otherwise ZnHTNotFound, and the
  /// out values say where a new item goes: the cell at slot if it is 0 or
  /// above, else the chain behind previous (the head when null).
  ZnHTErrorCode Search(ZnHashTableItem *probe, ZnHashTableItem *&found, int *bucket, int *slot,
                       ZnChainNode **previous) const;
  /// Frees every chain node and forgets the items. With keep false the
  /// cells are zeroed too; with keep true they are left as they are.
  void Clear(bool keep);
  /// Hands each item's value to callback (may be null), destroys each item,
  /// then Clear(false).
  void ClearItems(ZnHashTableDeleteCallback *callback);

 private:
  class ZnHashTableClearItemsCB;
  class ZnHashTableCopier;

  /// An inline slot: the item (null when free) and its hash.
  struct ZnCell {
    ZnHashTableItem *pItem;
    ZnULong udwHash;
  };

  /// The first cells of all buckets lie together, then the other cells of
  /// each bucket in turn: most buckets hold at most one item, so lookups
  /// mostly read the dense first part.
  static ZnCell &CellIn(ZnCell *cells, int buckets, int slots, int bucket, int slot) {
    return slot == 0 ? cells[bucket] : cells[buckets + (slots - 1) * bucket + slot - 1];
  }
  ZnCell &Cell(int bucket, int slot) const { return CellIn(pCells, iBucketCount, iSlotsPerBucket, bucket, slot); }
  /// hash modulo the bucket count, by a multiply with the precomputed
  /// reciprocal instead of a division (exact for every 32-bit hash).
  int Home(ZnULong hash) const;
  ZnHTErrorCode Search(ZnHashTableItem *probe, ZnULong hash, ZnHashTableItem *&found, int *slot,
                       ZnChainNode **previous) const;
  void AllocateArrays();
  void StoreAt(ZnHashTableItem *item, ZnULong hash, int bucket, int slot, ZnChainNode *previous);
  void Place(ZnHashTableItem *item, ZnULong hash);
  void Resize();
  void *WalkFrom(ZnListContext &context, int bucket) const;

  static unsigned char *primeTable;
  static unsigned char *primeTableBoundary;

  int iBucketCount;
  int iSlotsPerBucket;
  ZnCell *pCells;  ///< bucket count * slots per bucket, aligned to a cache line
  ZnChainNode **ppChains;
  int iItemCount;
  int iResizeThreshold;
  bool bDynamic;
  bool bResizing;
  std::uint64_t uqwReciprocal;  ///< 2^64 / bucket count, rounded up
};

#endif  // ZNUTIL_CONTAINERS_ZNHASHTABLE_H
