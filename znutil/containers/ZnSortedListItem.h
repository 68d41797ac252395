// ZnSortedListItem: an item of a ZnSortedList, which knows its sort key.
#ifndef ZNUTIL_CONTAINERS_ZNSORTEDLISTITEM_H
#define ZNUTIL_CONTAINERS_ZNSORTEDLISTITEM_H

#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnSortedListItem {
 public:
  virtual ~ZnSortedListItem();
  /// The key by which the list orders the item.
  virtual ZnString GetSortKey() const = 0;
};

#endif  // ZNUTIL_CONTAINERS_ZNSORTEDLISTITEM_H
