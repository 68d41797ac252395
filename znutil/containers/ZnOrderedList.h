// ZnOrderedList: the sorted container of the library, an AVL tree of
// untyped items whose order the caller supplies with each call.
//
//   IntCompare order;                 // a ZnListItemCompare
//   ZnOrderedList tree;
//   tree.Add(&five, order);
//   tree.Add(&three, order);
//   ZnListContext position;
//   for (void *item = tree.GetFirst(position); item != nullptr; item = tree.GetNext(position)) { ... }
//
// Items are unique under the order and never owned. The compare callback
// always gets the item being added, deleted or sought on the left and a
// stored item on the right, so a search key need not be an item.
//
// A walk keeps its path in a counted object owned by the context, since
// nodes have no parent pointers; copies of the context share that one walk.
// Unlike ZnDblList, GetNext at the last item returns null and leaves the
// context there, so GetCurrent still gives the last item (deliberate). The
// context's data and key stay null during a walk. Adding or deleting during
// a walk leaves it undefined: rotations make the stored path stale.
#ifndef ZNUTIL_CONTAINERS_ZNORDEREDLIST_H
#define ZNUTIL_CONTAINERS_ZNORDEREDLIST_H

#include <znutil/containers/ZnListContext.h>
#include <znutil/containers/ZnListItemCompare.h>
#include <znutil/containers/ZnListItemDestroy.h>
#include <znutil/containers/ZnListItemIterate.h>
#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>

struct ZnAVLTreeNode;

class ZNUTIL_API ZnOrderedList {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  ZnOrderedList() : pRoot(nullptr), iCount(0) {}
  /// Not copyable: a member-wise copy would share and then twice free the
  /// nodes.
  ZnOrderedList(ZnOrderedList const &) = delete;
  ZnOrderedList &operator=(ZnOrderedList const &) = delete;
  /// Frees the nodes; the items are left alone.
  virtual ~ZnOrderedList();

  /// Stores item; false, with nothing taken or destroyed, when an equal
  /// item is there already.
  virtual bool Add(void *const item, ZnListItemCompare &compare);
  /// Stores item in place of an equal one, which destroyer gets first, or
  /// adds it. True.
  virtual bool Replace(void *const item, ZnListItemCompare &compare, ZnListItemDestroy &destroyer);
  /// Stores item in place of an equal one, which is not destroyed, or adds
  /// it. True.
  virtual bool Replace(void *const item, ZnListItemCompare &compare);
  /// Removes the item equal to key and hands it to destroyer; false if none.
  virtual bool Delete(void *const key, ZnListItemCompare &compare, ZnListItemDestroy &destroyer);
  /// Removes the item equal to key, which is not destroyed; false if none.
  virtual bool Delete(void *const key, ZnListItemCompare &compare);
  /// The stored item equal to key, or null. On a hit the context stands at
  /// it, ready for GetNext and GetPrev; on a miss its walk state is dropped.
  virtual void *Find(void *const key, ZnListItemCompare &compare, ZnListContext &context) const;
  /// The stored item equal to key, or null.
  virtual void *Find(void *const key, ZnListItemCompare &compare) const;
  /// Calls iterator with each item in order and its index from 0; false
  /// stops the walk. Null items do not end it, unlike ZnDblList::Iterate.
  virtual void Iterate(ZnListItemIterate &iterator, void *data) const;
  /// Frees every node, handing each item to destroyer after its subtrees.
  virtual void Clear(ZnListItemDestroy &destroyer);
  /// Frees every node; the items are not touched.
  virtual void Clear();

  /// Begins a walk at the first item; on an empty tree returns null and
  /// leaves the context as it was.
  void *GetFirst(ZnListContext &context) const;
  /// The following item; null at the last one, where the context stays.
  void *GetNext(ZnListContext &context) const;
  /// The item at the context, or null.
  void *GetCurrent(ZnListContext &context) const;
  /// The preceding item; null at the first one, where the context stays.
  void *GetPrev(ZnListContext &context) const;
  /// Begins a walk at the last item, as GetFirst.
  void *GetLast(ZnListContext &context) const;

  /// 0 for an empty tree, 1 for one node.
  int Height() const;
  /// True if every node's stored balance is the difference of its
  /// subtrees' heights. A self-check for tests and callers.
  bool VerifyBalance() const;
  /// The number of items.
  int GetCount() const { return iCount; }

 private:
  bool Store(void *item, bool replace, ZnListItemCompare &compare, ZnListItemDestroy *destroyer);
  bool Remove(void *key, ZnListItemCompare &compare, ZnListItemDestroy *destroyer);
  void FreeNodes(ZnListItemDestroy *destroyer);
  void *Begin(ZnListContext &context, int side) const;
  void *Step(ZnListContext &context, int side) const;

  ZnAVLTreeNode *pRoot;
  int iCount;
};

#endif  // ZNUTIL_CONTAINERS_ZNORDEREDLIST_H
