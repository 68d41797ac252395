#include <znutil/containers/ZnHashTable.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <memory>
#include <new>

#include <znutil/memory/ZnFixedBlockAllocator.h>

namespace {

// Cells come in cache lines of four.
constexpr std::align_val_t kCellAlignment{64};

// Twice value, held at INT_MAX rather than overflowing.
int Doubled(int value) { return static_cast<int>(std::min<long long>(2LL * value, INT_MAX)); }

ZnHashTable::ZnChainNode *NewChainNode(ZnHashTableItem *item, ZnULong hash) {
  auto *node = static_cast<ZnHashTable::ZnChainNode *>(ZnFixedBlockAllocator::Alloc(sizeof(ZnHashTable::ZnChainNode)));
  node->pItem = item;
  node->pNext = nullptr;
  node->udwHash = hash;
  return node;
}

}  // namespace

ZnHashTableItem::~ZnHashTableItem() {}

ZnHashTableStatistics::~ZnHashTableStatistics() { delete[] piHistogram; }

ZnHashTable::ZnHashTable(int size, int slots)
    : iBucketCount(SearchForClosestPrime(size)),
      iSlotsPerBucket(std::max(slots, 1)),
      pCells(nullptr),
      ppChains(nullptr),
      iItemCount(0),
      iResizeThreshold(0),
      bDynamic(false),
      bResizing(false),
      uqwReciprocal(0) {
  AllocateArrays();
}

ZnHashTable::~ZnHashTable() {
  Clear(true);
  ::operator delete[](pCells, kCellAlignment);
  delete[] ppChains;
}

void ZnHashTable::AllocateArrays() {
  std::size_t const cells = static_cast<std::size_t>(iBucketCount) * iSlotsPerBucket;
  pCells = static_cast<ZnCell *>(::operator new[](cells * sizeof(ZnCell), kCellAlignment));
  std::uninitialized_value_construct_n(pCells, cells);
  ppChains = new ZnChainNode *[iBucketCount]();
  // Lemire's fastmod: for d below 2^32, (ceil(2^64 / d) * x mod 2^64) * d / 2^64 is x mod d.
  uqwReciprocal = UINT64_MAX / static_cast<std::uint32_t>(iBucketCount) + 1;
}

inline int ZnHashTable::Home(ZnULong hash) const {
  __extension__ using Wide = unsigned __int128;
  std::uint64_t const fraction = uqwReciprocal * hash;
  return static_cast<int>((static_cast<Wide>(fraction) * static_cast<std::uint32_t>(iBucketCount)) >> 64);
}

void ZnHashTable::MakeDynamic(int percent) {
  bDynamic = true;
  long long const threshold = static_cast<long long>(iBucketCount) * percent / 100;
  iResizeThreshold = static_cast<int>(std::clamp<long long>(threshold, 1, INT_MAX));
}

ZnHTErrorCode ZnHashTable::Search(ZnHashTableItem *probe, ZnHashTableItem *&found, int *bucket, int *slot,
                                  ZnChainNode **previous) const {
  ZnULong const hash = probe->Hash();
  *bucket = Home(hash);
  return Search(probe, hash, found, slot, previous);
}

// Search in the bucket Home(hash); Equals is asked only where the hashes agree.
// Inlined into its callers in this file, so that a find carries no out values.
[[gnu::always_inline]] inline ZnHTErrorCode ZnHashTable::Search(ZnHashTableItem *probe, ZnULong hash, ZnHashTableItem *&found, int *slot,
                                  ZnChainNode **previous) const {
  int const home = Home(hash);
  *previous = nullptr;
  found = nullptr;
  for (int cell = 0; cell < iSlotsPerBucket; ++cell) {
    ZnCell const &here = Cell(home, cell);
    ZnHashTableItem *const item = here.pItem;
    if (item == nullptr) {
      *slot = cell;  // cells are packed: no chain behind a free one
      return ZnHTNotFound;
    }
    if (here.udwHash == hash && item->Equals(probe)) {
      *slot = cell;
      found = item;
      return ZnHTExists;
    }
  }
  *slot = -1;
  for (ZnChainNode *node = ppChains[home]; node != nullptr; node = node->pNext) {
    if (node->udwHash == hash && node->pItem->Equals(probe)) {
      found = node->pItem;
      return ZnHTExists;
    }
    *previous = node;
  }
  return ZnHTNotFound;
}

void ZnHashTable::StoreAt(ZnHashTableItem *item, ZnULong hash, int bucket, int slot, ZnChainNode *previous) {
  if (bDynamic && !bResizing && iResizeThreshold <= iItemCount) {
    Resize();
    ZnHashTableItem *found;
    bucket = Home(hash);
    Search(item, hash, found, &slot, &previous);  // the place has moved
  }
  if (slot >= 0) {
    Cell(bucket, slot) = ZnCell{item, hash};
  } else {
    (previous != nullptr ? previous->pNext : ppChains[bucket]) = NewChainNode(item, hash);
  }
  ++iItemCount;
}

ZnHTErrorCode ZnHashTable::AddItem(ZnHashTableItem *item, ZnHashTableItem *&existing) {
  ZnULong const hash = item->Hash();
  int slot;
  ZnChainNode *previous;
  if (Search(item, hash, existing, &slot, &previous) == ZnHTExists) return ZnHTExists;
  StoreAt(item, hash, Home(hash), slot, previous);
  return ZnHTSuccess;
}

ZnHTErrorCode ZnHashTable::ReplaceItem(ZnHashTableItem *item, ZnHashTableItem *&old) {
  ZnULong const hash = item->Hash();
  int const bucket = Home(hash);
  int slot;
  ZnChainNode *previous;
  if (Search(item, hash, old, &slot, &previous) == ZnHTNotFound) {
    StoreAt(item, hash, bucket, slot, previous);
  } else if (slot >= 0) {
    Cell(bucket, slot).pItem = item;
  } else {
    (previous != nullptr ? previous->pNext : ppChains[bucket])->pItem = item;
  }
  return ZnHTSuccess;
}

ZnHTErrorCode ZnHashTable::DeleteItem(ZnHashTableItem *probe, ZnHashTableItem *&removed) {
  int bucket, slot;
  ZnChainNode *previous;
  if (Search(probe, removed, &bucket, &slot, &previous) == ZnHTNotFound) return ZnHTNotFound;
  if (slot < 0) {
    ZnChainNode *&link = previous != nullptr ? previous->pNext : ppChains[bucket];
    ZnChainNode *const node = link;
    link = node->pNext;
    ZnFixedBlockAllocator::Free(node);
  } else {
    // Close the gap, and refill the last cell from the chain if there is one.
    for (; slot + 1 < iSlotsPerBucket && Cell(bucket, slot + 1).pItem != nullptr; ++slot) {
      Cell(bucket, slot) = Cell(bucket, slot + 1);
    }
    ZnChainNode *const head = ppChains[bucket];
    Cell(bucket, slot) = head != nullptr ? ZnCell{head->pItem, head->udwHash} : ZnCell{};
    if (head != nullptr) {
      ppChains[bucket] = head->pNext;
      ZnFixedBlockAllocator::Free(head);
    }
  }
  --iItemCount;
  return ZnHTSuccess;
}

ZnHTErrorCode ZnHashTable::FindItem(ZnHashTableItem *probe, ZnHashTableItem *&found) const {
  int slot;
  ZnChainNode *previous;
  return Search(probe, probe->Hash(), found, &slot, &previous) == ZnHTExists ? ZnHTSuccess : ZnHTNotFound;
}

// Appends item to its bucket of the grown table. The items are distinct,
// so none is compared: this is where AddItem would put it.
void ZnHashTable::Place(ZnHashTableItem *item, ZnULong hash) {
  int const bucket = Home(hash);
  int slot = 0;
  while (slot < iSlotsPerBucket && Cell(bucket, slot).pItem != nullptr) ++slot;
  if (slot < iSlotsPerBucket) {
    Cell(bucket, slot) = ZnCell{item, hash};
  } else {
    ZnChainNode **link = &ppChains[bucket];
    while (*link != nullptr) link = &(*link)->pNext;
    *link = NewChainNode(item, hash);
  }
  ++iItemCount;
}

// Doubles the buckets and the threshold, so the load stays the same, and
// places every item again: the cells bucket by bucket, then each chain.
void ZnHashTable::Resize() {
  if (bResizing) return;
  bResizing = true;
  ZnCell *const oldCells = pCells;
  ZnChainNode **const oldChains = ppChains;
  int const oldBuckets = iBucketCount;
  iBucketCount = SearchForClosestPrime(Doubled(iBucketCount));
  iResizeThreshold = Doubled(iResizeThreshold);
  AllocateArrays();
  iItemCount = 0;
  for (int bucket = 0; bucket < oldBuckets; ++bucket) {
    for (int slot = 0; slot < iSlotsPerBucket; ++slot) {
      ZnCell const &cell = CellIn(oldCells, oldBuckets, iSlotsPerBucket, bucket, slot);
      if (cell.pItem != nullptr) Place(cell.pItem, cell.udwHash);
    }
  }
  for (int bucket = 0; bucket < oldBuckets; ++bucket) {
    for (ZnChainNode *node = oldChains[bucket]; node != nullptr;) {
      ZnChainNode *const next = node->pNext;
      Place(node->pItem, node->udwHash);
      ZnFixedBlockAllocator::Free(node);
      node = next;
    }
  }
  ::operator delete[](oldCells, kCellAlignment);
  delete[] oldChains;
  bResizing = false;
}
