// ZnListItemMatches: the callback with which Find compares a key with stored items.
#ifndef ZNUTIL_CONTAINERS_ZNLISTITEMMATCHES_H
#define ZNUTIL_CONTAINERS_ZNLISTITEMMATCHES_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnListItemMatches {
 public:
  virtual ~ZnListItemMatches() = default;
  /// True when item is the one sought by key.
  virtual bool MatchItem(void *key, void *item) = 0;
};

#endif  // ZNUTIL_CONTAINERS_ZNLISTITEMMATCHES_H
