// ZnHashTable: walks over the whole table, and what is built on them:
// Iterate, the context walk, Statistics, Copy and the clears.
#include <znutil/containers/ZnHashTable.h>

#include <cstddef>

#include <znutil/containers/internal/ZnHashTableContext.h>
#include <znutil/memory/ZnFixedBlockAllocator.h>

using znutil::detail::ZnHashTableContext;

// Hands each item's value to the callback, then destroys the item.
class ZnHashTable::ZnHashTableClearItemsCB : public ZnHashTableIter {
 public:
  explicit ZnHashTableClearItemsCB(ZnHashTableDeleteCallback *callback) : pCallback(callback) {}
  bool IterateEntry(ZnHashTableItem *item, void *) override {
    if (pCallback != nullptr) pCallback->DeleteData(item->GetData());
    delete item;
    return true;
  }

 private:
  ZnHashTableDeleteCallback *pCallback;
};

// Adds a clone of each item to the table passed as data; a clone whose key
// is taken there is destroyed.
class ZnHashTable::ZnHashTableCopier : public ZnHashTableIter {
 public:
  bool IterateEntry(ZnHashTableItem *item, void *data) override {
    ZnHashTableItem *const clone = item->Clone();
    ZnHashTableItem *existing;
    if (static_cast<ZnHashTable *>(data)->AddItem(clone, existing) != ZnHTSuccess) delete clone;
    return true;
  }
};

void ZnHashTable::Iterate(ZnHashTableIter &iterator, void *data) const {
  for (int bucket = 0; bucket < iBucketCount; ++bucket) {
    for (int slot = 0; slot < iSlotsPerBucket && Cell(bucket, slot).pItem != nullptr; ++slot) {
      if (!iterator.IterateEntry(Cell(bucket, slot).pItem, data)) return;
    }
    for (ZnChainNode const *node = ppChains[bucket]; node != nullptr; node = node->pNext) {
      if (!iterator.IterateEntry(node->pItem, data)) return;
    }
  }
}

void ZnHashTable::Clear(bool keep) {
  for (int bucket = 0; bucket < iBucketCount; ++bucket) {
    for (ZnChainNode *node = ppChains[bucket]; node != nullptr;) {
      ZnChainNode *const next = node->pNext;
      ZnFixedBlockAllocator::Free(node);
      node = next;
    }
    ppChains[bucket] = nullptr;  // even when keeping: the nodes are gone
  }
  iItemCount = 0;
  if (!keep) {
    std::size_t const cells = static_cast<std::size_t>(iBucketCount) * iSlotsPerBucket;
    for (std::size_t cell = 0; cell < cells; ++cell) pCells[cell] = ZnCell{};
  }
}

void ZnHashTable::ClearItems(ZnHashTableDeleteCallback *callback) {
  ZnHashTableClearItemsCB clearer(callback);
  Iterate(clearer, nullptr);
  Clear(false);
}

void ZnHashTable::Clear(ZnHashTableDeleteCallback *callback) { ClearItems(callback); }

void ZnHashTable::Copy(ZnHashTable &other) {
  Clear(static_cast<ZnHashTableDeleteCallback *>(nullptr));
  ZnHashTableCopier copier;
  other.Iterate(copier, this);
}

void ZnHashTable::Statistics(ZnHashTableStatistics *stats, ZnULong flags) const {
  stats->iItemCount = 0;
  delete[] stats->piHistogram;
  stats->piHistogram = nullptr;
  stats->iBucketCount = iBucketCount;
  stats->iSlotsPerBucket = iSlotsPerBucket;
  if ((flags & 2) != 0) {
    int *const histogram = new int[iSlotsPerBucket + 1]();
    for (int bucket = 0; bucket < iBucketCount; ++bucket) {
      for (int slot = 0; slot < iSlotsPerBucket && Cell(bucket, slot).pItem != nullptr; ++slot) ++histogram[slot];
      for (ZnChainNode const *node = ppChains[bucket]; node != nullptr; node = node->pNext) {
        ++histogram[iSlotsPerBucket];
      }
    }
    stats->piHistogram = histogram;
  }
  if ((flags & 1) != 0) stats->iItemCount = iItemCount;
}

// Settles the walk on the first item of the first non-empty bucket from
// bucket on, or ends it.
void *ZnHashTable::WalkFrom(ZnListContext &context, int bucket) const {
  auto *const walk = static_cast<ZnHashTableContext *>(context.OwnedData());
  while (bucket < iBucketCount && Cell(bucket, 0).pItem == nullptr) ++bucket;
  walk->iBucket = bucket;
  walk->iSlot = 0;
  walk->pNode = nullptr;
  ZnHashTableItem const *const item = bucket < iBucketCount ? Cell(bucket, 0).pItem : nullptr;
  context.SetData(item != nullptr ? item->GetData() : nullptr);
  context.SetKey(item != nullptr ? item->GetKey() : nullptr);
  return context.Data();
}

void *ZnHashTable::GetFirst(ZnListContext &context) const {
  if (iItemCount == 0) return nullptr;
  auto *const walk = new ZnHashTableContext;
  context.SetOwnedData(walk);
  walk->Release();  // the context holds the only reference
  return WalkFrom(context, 0);
}

void *ZnHashTable::GetCurrent(ZnListContext &context) const { return context.Data(); }

void *ZnHashTable::GetNext(ZnListContext &context) const {
  auto *const walk = static_cast<ZnHashTableContext *>(context.OwnedData());
  if (walk == nullptr || walk->iBucket >= iBucketCount) return nullptr;
  ZnHashTableItem const *item = nullptr;
  if (walk->pNode != nullptr) {
    walk->pNode = walk->pNode->pNext;
    if (walk->pNode != nullptr) item = walk->pNode->pItem;
  } else if (++walk->iSlot < iSlotsPerBucket) {
    item = Cell(walk->iBucket, walk->iSlot).pItem;
  } else if (ppChains[walk->iBucket] != nullptr) {
    walk->pNode = ppChains[walk->iBucket];
    item = walk->pNode->pItem;
  }
  if (item == nullptr) return WalkFrom(context, walk->iBucket + 1);
  context.SetData(item->GetData());
  context.SetKey(item->GetKey());
  return context.Data();
}
