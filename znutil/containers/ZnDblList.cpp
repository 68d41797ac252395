#include <znutil/containers/ZnDblList.h>

#include <vector>

#include <znutil/memory/ZnFixedBlockAllocator.h>

ZnDblList::~ZnDblList() { FreeNodes(nullptr); }

void ZnDblList::Prepend(void *const item) { Insert(item, Before, ZnListContext(pFirst)); }

void ZnDblList::Append(void *const item) { Insert(item, After, ZnListContext(pLast)); }

void ZnDblList::Add(void *const item) { Append(item); }

void ZnDblList::Insert(void *item, EnumListPosition position, ZnListContext const &context) {
  InsertAtNode(item, position, static_cast<ZnDblListItem *>(context.Data()));
}

void ZnDblList::InsertAtNode(void *item, EnumListPosition position, ZnDblListItem *node) {
  auto *added = static_cast<ZnDblListItem *>(ZnFixedBlockAllocator::Alloc(sizeof(ZnDblListItem)));
  added->pItem = item;
  added->pPrev = nullptr;
  added->pNext = nullptr;
  LinkChain(added, added, 1, position, node);
}

void ZnDblList::Merge(ZnDblList &other, EnumListPosition position, ZnListContext const &context) {
  if (&other == this || other.pFirst == nullptr) return;
  LinkChain(other.pFirst, other.pLast, other.iCount, position, static_cast<ZnDblListItem *>(context.Data()));
  other.pFirst = nullptr;
  other.pLast = nullptr;
  other.iCount = 0;
}

// Links the chain first..last, whose outer links are null, next to node.
// One node is the chain of an insertion; a whole list is that of a merge.
void ZnDblList::LinkChain(ZnDblListItem *first, ZnDblListItem *last, int count, EnumListPosition position,
                          ZnDblListItem *node) {
  iCount += count;
  if (pFirst == nullptr) {
    pFirst = first;
    pLast = last;
    return;
  }
  if (node == nullptr) node = position == Before ? pFirst : pLast;
  ZnDblListItem *const prev = position == Before ? node->pPrev : node;
  ZnDblListItem *const next = position == Before ? node : node->pNext;
  first->pPrev = prev;
  last->pNext = next;
  (prev != nullptr ? prev->pNext : pFirst) = first;
  (next != nullptr ? next->pPrev : pLast) = last;
}

// The items from node on, taken before anything is added: copying a list
// into itself must see each item once, also where an addition lands among
// the originals (a sorted list) or behind them.
static std::vector<void *> ItemsFrom(ZnDblListItem const *node) {
  std::vector<void *> items;
  for (; node != nullptr; node = node->pNext) items.push_back(node->pItem);
  return items;
}

void ZnDblList::Copy(ZnDblList const &list, ZnListItemCopy &copier) {
  for (void *item : ItemsFrom(list.pFirst)) {
    void *const copy = copier.CopyItem(item);
    if (copy != nullptr) Add(copy);
  }
}

void ZnDblList::Copy(ZnDblList const &list) {
  for (void *item : ItemsFrom(list.pFirst)) Add(item);
}

void ZnDblList::Iterate(ZnListItemIterate &iterator, void *data) const {
  ZnListContext position;
  int index = 0;
  for (void *item = GetFirst(position); item != nullptr; item = GetNext(position)) {
    if (!iterator.IterateItem(item, data, index++)) return;
  }
}

void *ZnDblList::Unlink(ZnDblListItem *node) {
  (node->pPrev != nullptr ? node->pPrev->pNext : pFirst) = node->pNext;
  (node->pNext != nullptr ? node->pNext->pPrev : pLast) = node->pPrev;
  --iCount;
  void *const item = node->pItem;
  ZnFixedBlockAllocator::Free(node);
  return item;
}

void *ZnDblList::DeleteFirst() { return pFirst != nullptr ? Unlink(pFirst) : nullptr; }

void *ZnDblList::DeleteLast() { return pLast != nullptr ? Unlink(pLast) : nullptr; }

void *ZnDblList::Delete(ZnListContext &context) {
  auto *node = static_cast<ZnDblListItem *>(context.Data());
  if (node == nullptr) return nullptr;
  context.SetData(node->pNext);
  return Unlink(node);
}

void *ZnDblList::DeleteAtContext(ZnListContext context) { return Delete(context); }

void ZnDblList::Clear(ZnListItemFilter &filter) {
  ZnDblListItem *node = pFirst;
  while (node != nullptr) {
    ZnDblListItem *const next = node->pNext;
    if (filter.FilterItem(node->pItem)) {
      ZnListContext at(node);
      Delete(at);
    }
    node = next;
  }
}

void ZnDblList::Clear(ZnListItemDestroy &destroyer) { FreeNodes(&destroyer); }

void ZnDblList::Clear() { FreeNodes(nullptr); }

void ZnDblList::FreeNodes(ZnListItemDestroy *destroyer) {
  ZnDblListItem *node = pFirst;
  pFirst = nullptr;
  pLast = nullptr;
  iCount = 0;
  while (node != nullptr) {
    ZnDblListItem *const next = node->pNext;
    if (destroyer != nullptr) destroyer->DestroyItem(node->pItem);
    ZnFixedBlockAllocator::Free(node);
    node = next;
  }
}

namespace {

// Identity, for the Find forms that take no matcher.
class SameItem : public ZnListItemMatches {
 public:
  bool MatchItem(void *key, void *item) override { return key == item; }
};

}  // namespace

ZnListContext ZnDblList::Find(void *key, ZnListContext context, int whence, ZnListItemMatches &matches) {
  auto *node = static_cast<ZnDblListItem *>(context.Data());
  switch (whence) {
    case 0: node = pFirst; break;
    case 1: break;
    case 2: node = node != nullptr ? node->pNext : nullptr; break;
    default: node = nullptr; break;
  }
  for (; node != nullptr; node = node->pNext) {
    if (matches.MatchItem(key, node->pItem)) return ZnListContext(node);
  }
  return ZnListContext();
}

ZnListContext ZnDblList::Find(void *item, ZnListContext context, int whence) {
  SameItem same;
  return Find(item, context, whence, same);
}

ZnListContext ZnDblList::Find(void *key, ZnListItemMatches &matches) { return Find(key, NULL_CONTEXT, 0, matches); }

ZnListContext ZnDblList::Find(void *item) { return Find(item, NULL_CONTEXT, 0); }
