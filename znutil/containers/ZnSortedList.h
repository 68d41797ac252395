// ZnSortedList: a ZnDblList kept in ascending order of its items' sort keys.
//
//   ZnSortedList names;
//   names.Add(&b);   // key "b"
//   names.Add(&a);   // key "a": goes first
//
// Every insertion, whatever position and context it names, goes before the
// first stored item whose key is above the new one, so among equal keys the
// newest comes last. Keys compare as plain ZnString values (case-sensitive).
// A stored null item ends the search, and what comes after it is not
// ordered: a new item then goes to the end.
#ifndef ZNUTIL_CONTAINERS_ZNSORTEDLIST_H
#define ZNUTIL_CONTAINERS_ZNSORTEDLIST_H

#include <znutil/containers/ZnDblList.h>
#include <znutil/containers/ZnSortedListItem.h>

class ZNUTIL_API ZnSortedList : public ZnDblList {
 public:
  using ZnDblList::Add;
  using ZnDblList::Append;
  using ZnDblList::Insert;
  using ZnDblList::Prepend;

  /// All three insert in key order.
  void Add(ZnSortedListItem *item) { ZnDblList::Append(item); }
  void Append(ZnSortedListItem *item) { ZnDblList::Append(item); }
  void Prepend(ZnSortedListItem *item) { ZnDblList::Append(item); }

  /// Inserts in key order; position and context are ignored. item must be
  /// a ZnSortedListItem, or null, which goes to the end.
  void Insert(void *item, EnumListPosition position, ZnListContext const &context) override;
};

#endif  // ZNUTIL_CONTAINERS_ZNSORTEDLIST_H
