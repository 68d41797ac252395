// ZnUuidIndex: values found by ZnUuid key.
//
// The values are not owned; a stored null value reads as absent.
#ifndef ZNUTIL_CONTAINERS_ZNUUIDINDEX_H
#define ZNUTIL_CONTAINERS_ZNUUIDINDEX_H

#include <znutil/containers/ZnUuid.h>
#include <znutil/containers/ZnKeyedIndex.h>
#include <znutil/platform/Export.h>

class ZNUTIL_API ZnUuidIndex : public ZnKeyedIndex {
 public:
  /// The next prime at or above `size` buckets of four slots.
  explicit ZnUuidIndex(int size = 53) : ZnKeyedIndex(size) {}

  /// Adds and returns null; if the key exists nothing changes and the
  /// stored value is returned.
  virtual void *Add(ZnUuid const & key, void *value);
  /// Stores the value in any case; returns the former value, or null.
  virtual void *Replace(ZnUuid const & key, void *value);
  /// Removes the key; returns its value, or null if it was absent.
  virtual void *Delete(ZnUuid const & key);
  /// The stored value, or null.
  virtual void *Find(ZnUuid const & key);

 private:
  class ZnUuidIndexEntry;
};

#endif  // ZNUTIL_CONTAINERS_ZNUUIDINDEX_H
