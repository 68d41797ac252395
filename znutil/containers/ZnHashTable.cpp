#include <znutil/containers/ZnHashTable.h>

#include <algorithm>
#include <climits>
#include <cstddef>

#include <znutil/memory/ZnFixedBlockAllocator.h>

namespace {

// Twice value, held at INT_MAX rather than overflowing.
int Doubled(int value) { return static_cast<int>(std::min<long long>(2LL * value, INT_MAX)); }

ZnHashTable::ZnChainNode *NewChainNode(ZnHashTableItem *item) {
  auto *node = static_cast<ZnHashTable::ZnChainNode *>(ZnFixedBlockAllocator::Alloc(sizeof(ZnHashTable::ZnChainNode)));
  node->pItem = item;
  node->pNext = nullptr;
  return node;
}

}  // namespace

ZnHashTableItem::~ZnHashTableItem() {}

ZnHashTableStatistics::~ZnHashTableStatistics() { delete[] piHistogram; }

ZnHashTable::ZnHashTable(int size, int slots)
    : iBucketCount(SearchForClosestPrime(size)),
      iSlotsPerBucket(std::max(slots, 1)),
      ppSlots(nullptr),
      ppChains(nullptr),
      iItemCount(0),
      iResizeThreshold(0),
      bDynamic(false),
      bResizing(false) {
  AllocateArrays();
}

ZnHashTable::~ZnHashTable() {
  Clear(true);
  delete[] ppSlots;
  delete[] ppChains;
}

void ZnHashTable::AllocateArrays() {
  ppSlots = new ZnHashTableItem *[static_cast<std::size_t>(iBucketCount) * iSlotsPerBucket]();
  ppChains = new ZnChainNode *[iBucketCount]();
}

void ZnHashTable::MakeDynamic(int percent) {
  bDynamic = true;
  long long const threshold = static_cast<long long>(iBucketCount) * percent / 100;
  iResizeThreshold = static_cast<int>(std::clamp<long long>(threshold, 1, INT_MAX));
}

ZnHTErrorCode ZnHashTable::Search(ZnHashTableItem *probe, ZnHashTableItem *&found, int *bucket, int *slot,
                                  ZnChainNode **previous) const {
  int const home = static_cast<int>(probe->Hash() % static_cast<ZnULong>(iBucketCount));
  ZnHashTableItem *const *const cells = &Cell(home, 0);
  *bucket = home;
  *previous = nullptr;
  found = nullptr;
  for (int cell = 0; cell < iSlotsPerBucket; ++cell) {
    if (cells[cell] == nullptr) {
      *slot = cell;  // cells are packed: no chain behind a free one
      return ZnHTNotFound;
    }
    if (cells[cell]->Equals(probe)) {
      *slot = cell;
      found = cells[cell];
      return ZnHTExists;
    }
  }
  *slot = -1;
  for (ZnChainNode *node = ppChains[home]; node != nullptr; node = node->pNext) {
    if (node->pItem->Equals(probe)) {
      found = node->pItem;
      return ZnHTExists;
    }
    *previous = node;
  }
  return ZnHTNotFound;
}

void ZnHashTable::StoreAt(ZnHashTableItem *item, int bucket, int slot, ZnChainNode *previous) {
  if (bDynamic && !bResizing && iResizeThreshold <= iItemCount) {
    Resize();
    ZnHashTableItem *found;
    Search(item, found, &bucket, &slot, &previous);  // the place has moved
  }
  if (slot >= 0) {
    Cell(bucket, slot) = item;
  } else {
    (previous != nullptr ? previous->pNext : ppChains[bucket]) = NewChainNode(item);
  }
  ++iItemCount;
}

ZnHTErrorCode ZnHashTable::AddItem(ZnHashTableItem *item, ZnHashTableItem *&existing) {
  int bucket, slot;
  ZnChainNode *previous;
  if (Search(item, existing, &bucket, &slot, &previous) == ZnHTExists) return ZnHTExists;
  StoreAt(item, bucket, slot, previous);
  return ZnHTSuccess;
}

ZnHTErrorCode ZnHashTable::ReplaceItem(ZnHashTableItem *item, ZnHashTableItem *&old) {
  int bucket, slot;
  ZnChainNode *previous;
  if (Search(item, old, &bucket, &slot, &previous) == ZnHTNotFound) {
    StoreAt(item, bucket, slot, previous);
  } else if (slot >= 0) {
    Cell(bucket, slot) = item;
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
    for (; slot + 1 < iSlotsPerBucket && Cell(bucket, slot + 1) != nullptr; ++slot) {
      Cell(bucket, slot) = Cell(bucket, slot + 1);
    }
    ZnChainNode *const head = ppChains[bucket];
    Cell(bucket, slot) = head != nullptr ? head->pItem : nullptr;
    if (head != nullptr) {
      ppChains[bucket] = head->pNext;
      ZnFixedBlockAllocator::Free(head);
    }
  }
  --iItemCount;
  return ZnHTSuccess;
}

ZnHTErrorCode ZnHashTable::FindItem(ZnHashTableItem *probe, ZnHashTableItem *&found) const {
  int bucket, slot;
  ZnChainNode *previous;
  return Search(probe, found, &bucket, &slot, &previous) == ZnHTExists ? ZnHTSuccess : ZnHTNotFound;
}

// Doubles the buckets and the threshold, so the load stays the same, and
// adds every item again: the cells in array order, then each chain.
void ZnHashTable::Resize() {
  if (bResizing) return;
  bResizing = true;
  ZnHashTableItem **const oldSlots = ppSlots;
  ZnChainNode **const oldChains = ppChains;
  std::size_t const oldCells = static_cast<std::size_t>(iBucketCount) * iSlotsPerBucket;
  int const oldBuckets = iBucketCount;
  iBucketCount = SearchForClosestPrime(Doubled(iBucketCount));
  iResizeThreshold = Doubled(iResizeThreshold);
  AllocateArrays();
  iItemCount = 0;
  ZnHashTableItem *existing;
  for (std::size_t cell = 0; cell < oldCells; ++cell) {
    if (oldSlots[cell] != nullptr) AddItem(oldSlots[cell], existing);
  }
  for (int bucket = 0; bucket < oldBuckets; ++bucket) {
    for (ZnChainNode *node = oldChains[bucket]; node != nullptr;) {
      ZnChainNode *const next = node->pNext;
      AddItem(node->pItem, existing);
      ZnFixedBlockAllocator::Free(node);
      node = next;
    }
  }
  delete[] oldSlots;
  delete[] oldChains;
  bResizing = false;
}
