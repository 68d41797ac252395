// ZnListItemDestroy: the callback that destroys items as a container lets them go.
#ifndef ZNUTIL_CONTAINERS_ZNLISTITEMDESTROY_H
#define ZNUTIL_CONTAINERS_ZNLISTITEMDESTROY_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnListItemDestroy {
 public:
  virtual ~ZnListItemDestroy() = default;
  /// Destroys one item taken out of a container.
  virtual void DestroyItem(void *item) = 0;
};

#endif  // ZNUTIL_CONTAINERS_ZNLISTITEMDESTROY_H
