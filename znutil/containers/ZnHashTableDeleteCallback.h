// ZnHashTableDeleteCallback: what a clearing hash table calls with the value
// of each item before it destroys the item.
#ifndef ZNUTIL_CONTAINERS_ZNHASHTABLEDELETECALLBACK_H
#define ZNUTIL_CONTAINERS_ZNHASHTABLEDELETECALLBACK_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnHashTableDeleteCallback {
 public:
  virtual ~ZnHashTableDeleteCallback() = default;
  /// Disposes of one item's value.
  virtual void DeleteData(void *data) = 0;
};

#endif  // ZNUTIL_CONTAINERS_ZNHASHTABLEDELETECALLBACK_H
