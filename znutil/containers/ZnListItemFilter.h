// ZnListItemFilter: the callback that picks the items a filtering Clear removes.
#ifndef ZNUTIL_CONTAINERS_ZNLISTITEMFILTER_H
#define ZNUTIL_CONTAINERS_ZNLISTITEMFILTER_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnListItemFilter {
 public:
  virtual ~ZnListItemFilter() = default;
  /// True means take the item out of the container.
  virtual bool FilterItem(void *item) = 0;
};

#endif  // ZNUTIL_CONTAINERS_ZNLISTITEMFILTER_H
