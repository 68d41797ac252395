// ZnListItemIterate: the callback that Iterate calls for each item, with the caller's data.
#ifndef ZNUTIL_CONTAINERS_ZNLISTITEMITERATE_H
#define ZNUTIL_CONTAINERS_ZNLISTITEMITERATE_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnListItemIterate {
 public:
  virtual ~ZnListItemIterate() = default;
  /// Visits item, the index-th of the walk from 0; false stops the walk.
  virtual bool IterateItem(void *item, void *data, int index) = 0;
};

#endif  // ZNUTIL_CONTAINERS_ZNLISTITEMITERATE_H
