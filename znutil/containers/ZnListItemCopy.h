// ZnListItemCopy: the callback with which a container copies the items of another.
#ifndef ZNUTIL_CONTAINERS_ZNLISTITEMCOPY_H
#define ZNUTIL_CONTAINERS_ZNLISTITEMCOPY_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnListItemCopy {
 public:
  virtual ~ZnListItemCopy() = default;
  /// Returns the copy of item to store, or null to skip it.
  virtual void *CopyItem(void *item) = 0;
};

#endif  // ZNUTIL_CONTAINERS_ZNLISTITEMCOPY_H
