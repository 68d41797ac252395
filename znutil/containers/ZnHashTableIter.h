// ZnHashTableIter: the callback of ZnHashTable::Iterate.
#ifndef ZNUTIL_CONTAINERS_ZNHASHTABLEITER_H
#define ZNUTIL_CONTAINERS_ZNHASHTABLEITER_H

#include <znutil/platform/Export.h>

class ZnHashTableItem;

class ZNUTIL_API ZnHashTableIter {
 public:
  virtual ~ZnHashTableIter() = default;
  /// Visits item with the caller's data; false stops the walk.
  virtual bool IterateEntry(ZnHashTableItem *item, void *data) = 0;
};

#endif  // ZNUTIL_CONTAINERS_ZNHASHTABLEITER_H
