// ZnDblList: the doubly linked list of untyped items on which most
// collections of the library rest.
//
//   ZnDblList list;
//   list.Append(&a);
//   list.Append(&b);
//   ZnListContext position;
//   for (void *item = list.GetFirst(position); item != nullptr; item = list.GetNext(position)) { ... }
//
// The list holds pointers and never deletes an item by itself; its nodes
// come from ZnFixedBlockAllocator. It keeps no cursor: a ZnListContext holds
// a walk's position (a node), so any number of walks can run at once over an
// unchanging list. Delete(context) moves that context on to the following
// node, so a loop that deletes as it walks continues with GetCurrent:
//
//   void *item = list.GetFirst(position);
//   while (item != nullptr) {
//     if (Unwanted(item)) { list.Delete(position); item = list.GetCurrent(position); }
//     else item = list.GetNext(position);
//   }
//
// Any other context at a deleted node, and every context after Clear, Merge
// or destruction, is left dangling; nothing detects its use.
#ifndef ZNUTIL_CONTAINERS_ZNDBLLIST_H
#define ZNUTIL_CONTAINERS_ZNDBLLIST_H

#include <znutil/containers/ZnListContext.h>
#include <znutil/containers/ZnListItemCopy.h>
#include <znutil/containers/ZnListItemDestroy.h>
#include <znutil/containers/ZnListItemFilter.h>
#include <znutil/containers/ZnListItemIterate.h>
#include <znutil/containers/ZnListItemMatches.h>
#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>

/// The node of a ZnDblList, from ZnFixedBlockAllocator. A ZnDblList
/// context's data points to one; clients have no other use for it.
struct ZnDblListItem {
  void *pItem;
  ZnDblListItem *pPrev;
  ZnDblListItem *pNext;
};

class ZNUTIL_API ZnDblList {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  /// Where Insert and Merge put the new items relative to a node.
  enum EnumListPosition { Before = 0, After = 1 };

  ZnDblList() : pFirst(nullptr), pLast(nullptr), iCount(0) {}
  ZnDblList(ZnDblList const &) = delete;
  ZnDblList &operator=(ZnDblList const &) = delete;
  /// Frees the nodes; the items are left alone.
  virtual ~ZnDblList();

  /// Inserts before the first node.
  virtual void Prepend(void *const item);
  /// Inserts after the last node.
  virtual void Append(void *const item);
  /// Inserts before or after the context's node; a null context means the
  /// first node for Before and the last for After. Contexts stay valid.
  virtual void Insert(void *item, EnumListPosition position, ZnListContext const &context);
  /// Moves every node of other into this list, before or after the
  /// context's node as Insert places one; other ends empty. Merging a list
  /// into itself does nothing.
  virtual void Merge(ZnDblList &other, EnumListPosition position, ZnListContext const &context);
  /// Appends.
  virtual void Add(void *const item);
  /// Adds what copier makes of each item of list, first to last, skipping
  /// null copies. The list is not cleared first.
  virtual void Copy(ZnDblList const &list, ZnListItemCopy &copier);
  /// Adds every item pointer of list, first to last, sharing the items.
  virtual void Copy(ZnDblList const &list);

  /// Sets context to the first node and returns its item; on an empty list
  /// returns null with a null context.
  virtual void *GetFirst(ZnListContext &context) const {
    context.SetData(pFirst);
    return pFirst != nullptr ? pFirst->pItem : nullptr;
  }
  /// Steps forward. At the end the context becomes null, so a finished walk
  /// cannot be resumed; a null context stays null and gives null.
  virtual void *GetNext(ZnListContext &context) const {
    return StepTo(context, &ZnDblListItem::pNext);
  }
  /// The item at the context, or null.
  virtual void *GetCurrent(ZnListContext &context) const { return ItemAt(context); }
  /// The item at the context, or null.
  virtual void *GetAtContext(ZnListContext context) const { return ItemAt(context); }
  /// Steps backward, as GetNext.
  virtual void *GetPrev(ZnListContext &context) const {
    return StepTo(context, &ZnDblListItem::pPrev);
  }
  /// Sets context to the last node and returns its item, as GetFirst.
  virtual void *GetLast(ZnListContext &context) const {
    context.SetData(pLast);
    return pLast != nullptr ? pLast->pItem : nullptr;
  }
  /// Calls iterator with each item and its index from 0, through GetFirst
  /// and GetNext. Stops at false, and at a null item, so a null item stored
  /// in the list ends the walk early (deliberate).
  virtual void Iterate(ZnListItemIterate &iterator, void *data) const;

  /// Unlinks the first node and returns its item; null on an empty list.
  virtual void *DeleteFirst();
  /// Unlinks the last node and returns its item; null on an empty list.
  virtual void *DeleteLast();
  /// Unlinks the context's node, moves the context on to the following node
  /// and returns the item; a null context does nothing and gives null.
  virtual void *Delete(ZnListContext &context);
  /// Deletes at a copy of context, so the caller's context is left dangling.
  virtual void *DeleteAtContext(ZnListContext context);
  /// Deletes, through the virtual Delete, every item the filter picks.
  virtual void Clear(ZnListItemFilter &filter);
  /// Frees every node, calling destroyer with each item first to last.
  virtual void Clear(ZnListItemDestroy &destroyer);
  /// Frees every node; the items are not touched.
  virtual void Clear();

  /// The first match of key by matches, searched from where whence says:
  /// 0 the first item (context ignored), 1 the context's node, 2 the node
  /// after it; any other value finds nothing. A null context on a miss.
  virtual ZnListContext Find(void *key, ZnListContext context, int whence, ZnListItemMatches &matches);
  /// As above, matching item pointers for identity.
  virtual ZnListContext Find(void *item, ZnListContext context, int whence);
  /// The first match from the first item.
  virtual ZnListContext Find(void *key, ZnListItemMatches &matches);
  /// The first node holding item, from the first item.
  virtual ZnListContext Find(void *item);

  /// The number of items.
  int GetCount() const { return iCount; }

 protected:
  /// Links a new node for item before or after node, or at the end that
  /// position names when node is null.
  void InsertAtNode(void *item, EnumListPosition position, ZnDblListItem *node);

 private:
  static void *ItemAt(ZnListContext const &context) {
    auto const *node = static_cast<ZnDblListItem const *>(context.Data());
    return node != nullptr ? node->pItem : nullptr;
  }
  static void *StepTo(ZnListContext &context, ZnDblListItem *ZnDblListItem::*link) {
    auto const *node = static_cast<ZnDblListItem const *>(context.Data());
    if (node == nullptr) return nullptr;
    ZnDblListItem *const next = node->*link;
    context.SetData(next);
    return next != nullptr ? next->pItem : nullptr;
  }
  void LinkChain(ZnDblListItem *first, ZnDblListItem *last, int count, EnumListPosition position,
                 ZnDblListItem *node);
  void *Unlink(ZnDblListItem *node);
  void FreeNodes(ZnListItemDestroy *destroyer);

  ZnDblListItem *pFirst;
  ZnDblListItem *pLast;
  int iCount;
};

#endif  // ZNUTIL_CONTAINERS_ZNDBLLIST_H
