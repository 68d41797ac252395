#include <znutil/containers/ZnOrderedList.h>

#include <znutil/containers/internal/ZnAVLTree.h>
#include <znutil/containers/internal/ZnOrderedListContext.h>
#include <znutil/memory/ZnFixedBlockAllocator.h>

using namespace znutil::detail;

namespace {

// Gives context a new, empty walk state, replacing any older one, and
// returns it. The context holds the only reference: the creator's own is
// given back at once, so the state dies with the last context that shares
// it.
ZnOrderedListContext *NewWalk(ZnListContext &context) {
  auto *walk = new ZnOrderedListContext;
  context.SetData(nullptr);
  context.SetKey(nullptr);
  context.SetOwnedData(walk);
  walk->Release();
  return walk;
}

ZnOrderedListContext *WalkOf(ZnListContext const &context) {
  return static_cast<ZnOrderedListContext *>(context.OwnedData());
}

}  // namespace

ZnOrderedList::~ZnOrderedList() { FreeNodes(nullptr); }

bool ZnOrderedList::Store(void *item, bool replace, ZnListItemCompare &compare, ZnListItemDestroy *destroyer) {
  bool grew = false;
  ZnAVLAdded const added = AddLeaf(pRoot, item, grew, ZnAVLChange{compare, destroyer, replace});
  if (added == ZnAVLAdded::kNewNode) ++iCount;
  return added != ZnAVLAdded::kRefused;
}

bool ZnOrderedList::Add(void *const item, ZnListItemCompare &compare) { return Store(item, false, compare, nullptr); }

bool ZnOrderedList::Replace(void *const item, ZnListItemCompare &compare, ZnListItemDestroy &destroyer) {
  return Store(item, true, compare, &destroyer);
}

bool ZnOrderedList::Replace(void *const item, ZnListItemCompare &compare) {
  return Store(item, true, compare, nullptr);
}

bool ZnOrderedList::Remove(void *key, ZnListItemCompare &compare, ZnListItemDestroy *destroyer) {
  bool shrunk = false;
  ZnAVLTreeNode *const freed = DeleteNode(pRoot, key, shrunk, ZnAVLChange{compare, destroyer, false});
  if (freed == nullptr) return false;
  ZnFixedBlockAllocator::Free(freed);
  --iCount;
  return true;
}

bool ZnOrderedList::Delete(void *const key, ZnListItemCompare &compare, ZnListItemDestroy &destroyer) {
  return Remove(key, compare, &destroyer);
}

bool ZnOrderedList::Delete(void *const key, ZnListItemCompare &compare) { return Remove(key, compare, nullptr); }

void *ZnOrderedList::Find(void *const key, ZnListItemCompare &compare, ZnListContext &context) const {
  ZnOrderedListContext *const walk = NewWalk(context);
  for (ZnAVLTreeNode *node = pRoot; node != nullptr;) {
    walk->Push(node);
    int const order = compare.CompareItems(key, node->pItem);
    if (order == 0) {
      walk->NoteEnds(pRoot);
      return node->pItem;
    }
    node = node->pChild[order < 0 ? kLeft : kRight];
  }
  context.SetOwnedData(nullptr);
  return nullptr;
}

void *ZnOrderedList::Find(void *const key, ZnListItemCompare &compare) const {
  for (ZnAVLTreeNode const *node = pRoot; node != nullptr;) {
    int const order = compare.CompareItems(key, node->pItem);
    if (order == 0) return node->pItem;
    node = node->pChild[order < 0 ? kLeft : kRight];
  }
  return nullptr;
}

void ZnOrderedList::Iterate(ZnListItemIterate &iterator, void *data) const {
  int index = 0;
  IterateSubtree(pRoot, iterator, data, index);
}

void ZnOrderedList::FreeNodes(ZnListItemDestroy *destroyer) {
  ZnAVLTreeNode *const root = pRoot;
  pRoot = nullptr;
  iCount = 0;
  FreeSubtree(root, destroyer);
}

void ZnOrderedList::Clear(ZnListItemDestroy &destroyer) { FreeNodes(&destroyer); }

void ZnOrderedList::Clear() { FreeNodes(nullptr); }

// Begins a walk at the end of the tree on side: the whole spine from the
// root to that end is the path.
void *ZnOrderedList::Begin(ZnListContext &context, int side) const {
  if (pRoot == nullptr) return nullptr;
  ZnOrderedListContext *const walk = NewWalk(context);
  walk->PushSpine(pRoot, side);
  walk->NoteEnds(pRoot);
  return walk->Top()->pItem;
}

// One in-order step toward side: down into the subtree on that side, or
// else up past every ancestor reached from that side.
void *ZnOrderedList::Step(ZnListContext &context, int side) const {
  ZnOrderedListContext *const walk = WalkOf(context);
  if (walk == nullptr) return nullptr;
  ZnAVLTreeNode *current = walk->Top();
  if (current == nullptr || current == walk->End(side)) return nullptr;
  if (current->pChild[side] != nullptr) {
    walk->PushSpine(current->pChild[side], 1 - side);
  } else {
    walk->Pop();
    while (walk->Top() != nullptr && walk->Top()->pChild[side] == current) current = walk->Pop();
  }
  return walk->Top() != nullptr ? walk->Top()->pItem : nullptr;
}

void *ZnOrderedList::GetFirst(ZnListContext &context) const { return Begin(context, kLeft); }

void *ZnOrderedList::GetLast(ZnListContext &context) const { return Begin(context, kRight); }

void *ZnOrderedList::GetNext(ZnListContext &context) const { return Step(context, kRight); }

void *ZnOrderedList::GetPrev(ZnListContext &context) const { return Step(context, kLeft); }

void *ZnOrderedList::GetCurrent(ZnListContext &context) const {
  ZnOrderedListContext const *const walk = WalkOf(context);
  ZnAVLTreeNode const *const current = walk != nullptr ? walk->Top() : nullptr;
  return current != nullptr ? current->pItem : nullptr;
}

int ZnOrderedList::Height() const { return SubtreeHeight(pRoot); }

bool ZnOrderedList::VerifyBalance() const { return VerifiedHeight(pRoot) >= 0; }
