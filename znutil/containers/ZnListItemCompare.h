// ZnListItemCompare: the order of an ordered list, supplied with each call.
#ifndef ZNUTIL_CONTAINERS_ZNLISTITEMCOMPARE_H
#define ZNUTIL_CONTAINERS_ZNLISTITEMCOMPARE_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnListItemCompare {
 public:
  virtual ~ZnListItemCompare() = default;
  /// Below 0, 0 or above 0 as left orders before, with or after right.
  /// The ordered list passes the item being added, deleted or sought on the
  /// left and a stored item on the right, so the left need not be an item.
  virtual int CompareItems(void *left, void *right) = 0;
};

#endif  // ZNUTIL_CONTAINERS_ZNLISTITEMCOMPARE_H
