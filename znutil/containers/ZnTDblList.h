// ZnTDblList<T>: the typed form of ZnDblList, with an owner flag.
//
//   ZnTDblList<ZnTask> tasks(true);   // owning
//   tasks.Append(new ZnTask);
//   tasks.DeleteFirst();              // deletes the task and returns null
//
// An owning list deletes the item it unlinks in DeleteFirst, DeleteLast and
// Delete (and so in DeleteFirstItem, DeleteLastItem and DeleteItem), and
// what a filter takes out in Clear(ZnListItemFilter &). Its Clear(), and so
// its destructor, frees nodes only: that is deliberate, and a Clear that
// takes a destroyer is the way to destroy all items (or a specialisation of
// ZnTListItemDestroy<T>::DestroyTypedItem that deletes). To take an item out
// alive, revoke ownership around the call. T needs a virtual destructor if
// objects of derived types are stored.
#ifndef ZNUTIL_CONTAINERS_ZNTDBLLIST_H
#define ZNUTIL_CONTAINERS_ZNTDBLLIST_H

#include <znutil/containers/ZnDblList.h>
#include <znutil/containers/ZnTListItemDestroy.h>
#include <znutil/containers/ZnTListItemFilter.h>

template <class T>
class ZnTDblList : public ZnDblList {
 public:
  using ZnDblList::Add;
  using ZnDblList::Append;
  using ZnDblList::Clear;
  using ZnDblList::Insert;
  using ZnDblList::Prepend;

  explicit ZnTDblList(bool owner = false) : bOwner(owner) {}
  /// As Clear(): frees the nodes and, by itself, deletes no item.
  ~ZnTDblList() override { ZnTDblList::Clear(); }

  virtual void Prepend(T *item) { ZnDblList::Prepend(item); }
  virtual void Append(T *item) { ZnDblList::Append(item); }
  virtual void Add(T *item) { Append(item); }
  /// Inserts directly at the context's node, bypassing a derived Insert.
  virtual void Insert(T *item, EnumListPosition position, ZnListContext const &context) {
    InsertAtNode(item, position, static_cast<ZnDblListItem *>(context.Data()));
  }
  /// The virtual DeleteFirst: null when owner, the item having been deleted.
  virtual T *DeleteFirstItem() { return static_cast<T *>(DeleteFirst()); }
  /// The virtual DeleteLast, as DeleteFirstItem.
  virtual T *DeleteLastItem() { return static_cast<T *>(DeleteLast()); }
  /// The virtual Delete, as DeleteFirstItem.
  virtual T *DeleteItem(ZnListContext &context) { return static_cast<T *>(Delete(context)); }
  virtual T *First(ZnListContext &context) const { return static_cast<T *>(GetFirst(context)); }
  virtual T *Next(ZnListContext &context) const { return static_cast<T *>(GetNext(context)); }
  virtual T *Current(ZnListContext context) const { return static_cast<T *>(GetAtContext(context)); }
  virtual T *Last(ZnListContext &context) const { return static_cast<T *>(GetLast(context)); }
  virtual T *Prev(ZnListContext &context) const { return static_cast<T *>(GetPrev(context)); }

  void *DeleteFirst() override { return Dispose(ZnDblList::DeleteFirst()); }
  void *DeleteLast() override { return Dispose(ZnDblList::DeleteLast()); }
  void *Delete(ZnListContext &context) override { return Dispose(ZnDblList::Delete(context)); }

  /// Frees every node. When owner, each item goes to a ZnTListItemDestroy<T>
  /// without inner, which deletes nothing unless T's specialisation says so.
  void Clear() override { ClearThrough(nullptr); }
  /// Frees every node, handing each item to destroyer (through a
  /// ZnTListItemDestroy<T> when owner).
  void Clear(ZnListItemDestroy &destroyer) override { ClearThrough(&destroyer); }
  /// Takes out what filter picks; when owner, each such item is deleted once.
  void Clear(ZnListItemFilter &filter) override {
    if (!bOwner) {
      ZnDblList::Clear(filter);
      return;
    }
    // The typed filter deletes what it picks, so Delete must not delete it
    // again: ownership is off while the base walks the list.
    ZnTListItemFilter<T> typed(&filter);
    bOwner = false;
    ZnDblList::Clear(typed);
    bOwner = true;
  }

  bool IsOwner() const { return bOwner; }
  void TakeOwnership() { bOwner = true; }
  void RevokeOwnership() { bOwner = false; }

 private:
  void ClearThrough(ZnListItemDestroy *inner) {
    ZnTListItemDestroy<T> typed(inner);
    if (bOwner) {
      ZnDblList::Clear(typed);
    } else if (inner != nullptr) {
      ZnDblList::Clear(*inner);
    } else {
      ZnDblList::Clear();
    }
  }
  void *Dispose(void *item) {
    if (!bOwner) return item;
    delete static_cast<T *>(item);
    return nullptr;
  }

  bool bOwner;
};

#endif  // ZNUTIL_CONTAINERS_ZNTDBLLIST_H
