// ZnIndex64: values found by 64-bit unsigned key.
//
// The values are not owned; a stored null value reads as absent.
#ifndef ZNUTIL_CONTAINERS_ZNINDEX64_H
#define ZNUTIL_CONTAINERS_ZNINDEX64_H


#include <znutil/containers/ZnKeyedIndex.h>
#include <znutil/platform/Export.h>

class ZNUTIL_API ZnIndex64 : public ZnKeyedIndex {
 public:
  /// The next prime at or above `size` buckets of four slots.
  explicit ZnIndex64(int size = 53) : ZnKeyedIndex(size) {}

  /// Adds and returns null; if the key exists nothing changes and the
  /// stored value is returned.
  virtual void *Add(unsigned long long key, void *value);
  /// Stores the value in any case; returns the former value, or null.
  virtual void *Replace(unsigned long long key, void *value);
  /// Removes the key; returns its value, or null if it was absent.
  virtual void *Delete(unsigned long long key);
  /// The stored value, or null.
  virtual void *Find(unsigned long long key);

 private:
  class ZnIndex64Entry;
};

#endif  // ZNUTIL_CONTAINERS_ZNINDEX64_H
