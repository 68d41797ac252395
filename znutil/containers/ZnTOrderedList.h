// ZnTOrderedList<T>: the typed form of ZnOrderedList, with an owner flag.
//
//   ZnTOrderedList<ZnCfgSection> sections;   // ordered by ZnTListItemCompare<ZnCfgSection>
//   sections.Add(section);
//   ZnCfgSection *found = sections.Find(&probe);
//
// The order comes from Compare, by default ZnTListItemCompare<T>. When the
// list is the owner, Replace, Delete and both Clear forms hand the items
// they let go to a ZnTListItemDestroy<T> without inner, which deletes
// nothing unless T specialises it: so the owner flag by itself deletes no
// item (deliberate), and an owning Clear(ZnListItemDestroy &) ignores the
// destroyer it is given (deliberate too). A type whose list owns its items
// deletes them itself.
#ifndef ZNUTIL_CONTAINERS_ZNTORDEREDLIST_H
#define ZNUTIL_CONTAINERS_ZNTORDEREDLIST_H

#include <znutil/containers/ZnOrderedList.h>
#include <znutil/containers/ZnTListItemCompare.h>
#include <znutil/containers/ZnTListItemDestroy.h>

template <class T, class Compare = ZnTListItemCompare<T>>
class ZnTOrderedList : public ZnOrderedList {
 public:
  using ZnOrderedList::Add;
  using ZnOrderedList::Clear;
  using ZnOrderedList::Delete;
  using ZnOrderedList::Find;
  using ZnOrderedList::Replace;

  explicit ZnTOrderedList(bool owner = false) : bOwner(owner) {}
  /// As Clear().
  ~ZnTOrderedList() override { ZnTOrderedList::Clear(); }

  /// Stores item; false when an equal one is there.
  virtual bool Add(T *item) {
    Compare compare;
    return ZnOrderedList::Add(item, compare);
  }
  /// Stores item in place of an equal one, or adds it; true.
  virtual bool Replace(T *item) {
    Compare compare;
    return ReplaceWith(item, compare);
  }
  /// Removes the item equal to key; false if none.
  virtual bool Delete(T *key) {
    Compare compare;
    return DeleteWith(key, compare);
  }
  /// The stored item equal to key, or null.
  virtual T *Find(T *key) {
    Compare compare;
    return static_cast<T *>(ZnOrderedList::Find(key, compare));
  }
  virtual T *First(ZnListContext &context) { return static_cast<T *>(GetFirst(context)); }
  virtual T *Next(ZnListContext &context) { return static_cast<T *>(GetNext(context)); }
  virtual T *Current(ZnListContext &context) { return static_cast<T *>(GetCurrent(context)); }
  virtual T *Last(ZnListContext &context) { return static_cast<T *>(GetLast(context)); }
  virtual T *Prev(ZnListContext &context) { return static_cast<T *>(GetPrev(context)); }

  /// Frees every node (see the banner for an owning list).
  void Clear() override {
    if (!bOwner) {
      ZnOrderedList::Clear();
      return;
    }
    ZnTListItemDestroy<T> typed;
    ZnOrderedList::Clear(typed);
  }
  /// Frees every node; an owning list ignores destroyer (see the banner).
  void Clear(ZnListItemDestroy &destroyer) override {
    if (!bOwner) {
      ZnOrderedList::Clear(destroyer);
      return;
    }
    ZnTOrderedList::Clear();
  }

  bool IsOwner() const { return bOwner; }
  void TakeOwnership() { bOwner = true; }
  void RevokeOwnership() { bOwner = false; }

 protected:
  /// Replace and Delete under the owner rule, with any order.
  bool ReplaceWith(void *item, ZnListItemCompare &compare) {
    if (!bOwner) return ZnOrderedList::Replace(item, compare);
    ZnTListItemDestroy<T> typed;
    return ZnOrderedList::Replace(item, compare, typed);
  }
  bool DeleteWith(void *key, ZnListItemCompare &compare) {
    if (!bOwner) return ZnOrderedList::Delete(key, compare);
    ZnTListItemDestroy<T> typed;
    return ZnOrderedList::Delete(key, compare, typed);
  }

 private:
  bool bOwner;
};

#endif  // ZNUTIL_CONTAINERS_ZNTORDEREDLIST_H
