// ZnTStringKeyOrderedList<T>: an ordered list of T kept by the items' string
// keys, which can be searched by key alone.
//
//   ZnTStringKeyOrderedList<ZnPluginPath> paths;   // T offers ZnString GetKey() const
//   paths.Add(path);
//   ZnListContext position;
//   ZnPluginPath *found = paths.Find(ZnString("tools"), position);
//
// Keys compare with ZnString::Compare, so case counts. Owner flag and Clear
// rules are those of ZnTOrderedList: the owner flag alone deletes no item.
#ifndef ZNUTIL_CONTAINERS_ZNTSTRINGKEYORDEREDLIST_H
#define ZNUTIL_CONTAINERS_ZNTSTRINGKEYORDEREDLIST_H

#include <znutil/containers/ZnTListItemStringCompare.h>
#include <znutil/containers/ZnTListItemStringKeyCompare.h>
#include <znutil/containers/ZnTOrderedList.h>
#include <znutil/text/ZnString.h>

template <class T>
class ZnTStringKeyOrderedList : public ZnTOrderedList<T, ZnTListItemStringKeyCompare<T>> {
  using Base = ZnTOrderedList<T, ZnTListItemStringKeyCompare<T>>;

 public:
  using Base::Delete;
  using Base::Find;

  explicit ZnTStringKeyOrderedList(bool owner = false) : Base(owner) {}

  /// Removes the item whose key is key; false if none.
  virtual bool Delete(ZnString const &key) {
    ZnTListItemStringCompare<T> compare;
    return this->DeleteWith(const_cast<ZnString *>(&key), compare);
  }
  /// The item whose key is key, or null; on a hit the context stands at it.
  virtual T *Find(ZnString const &key, ZnListContext &context) {
    ZnTListItemStringCompare<T> compare;
    return static_cast<T *>(ZnOrderedList::Find(const_cast<ZnString *>(&key), compare, context));
  }
  /// The item with item's key, or null; on a hit the context stands at it.
  virtual T *Find(T *item, ZnListContext &context) {
    ZnTListItemStringKeyCompare<T> compare;
    return static_cast<T *>(ZnOrderedList::Find(item, compare, context));
  }
};

#endif  // ZNUTIL_CONTAINERS_ZNTSTRINGKEYORDEREDLIST_H
