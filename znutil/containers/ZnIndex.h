// ZnIndex: values found by 32-bit unsigned key.
//
// The values are not owned; a stored null value reads as absent.
#ifndef ZNUTIL_CONTAINERS_ZNINDEX_H
#define ZNUTIL_CONTAINERS_ZNINDEX_H

#include <znutil/platform/WinTypes.h>
#include <znutil/containers/ZnKeyedIndex.h>
#include <znutil/platform/Export.h>

class ZNUTIL_API ZnIndex : public ZnKeyedIndex {
 public:
  /// The next prime at or above `size` buckets of four slots.
  explicit ZnIndex(int size = 53) : ZnKeyedIndex(size) {}

  /// Adds and returns null; if the key exists nothing changes and the
  /// stored value is returned.
  virtual void *Add(ZnULong key, void *value);
  /// Stores the value in any case; returns the former value, or null.
  virtual void *Replace(ZnULong key, void *value);
  /// Removes the key; returns its value, or null if it was absent.
  virtual void *Delete(ZnULong key);
  /// The stored value, or null.
  virtual void *Find(ZnULong key);

 private:
  class ZnIndexEntry;
};

#endif  // ZNUTIL_CONTAINERS_ZNINDEX_H
