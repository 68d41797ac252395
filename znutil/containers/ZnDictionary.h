// ZnDictionary: values found by ZnString key, optionally ignoring case.
//
//   ZnDictionary names;
//   names.HashCaseInsensitive();      // only while empty; there is no way back
//   names.Add(ZnString("Width"), &width);
//   names.Find(ZnString("WIDTH"));     // &width
//
// A case-insensitive dictionary stores its keys in lower case, so a walk
// shows them so; hashing and equality are always the plain ones.
//
// The values are not owned; a stored null value reads as absent.
#ifndef ZNUTIL_CONTAINERS_ZNDICTIONARY_H
#define ZNUTIL_CONTAINERS_ZNDICTIONARY_H

#include <znutil/text/ZnString.h>
#include <znutil/containers/ZnKeyedIndex.h>
#include <znutil/platform/Export.h>

class ZNUTIL_API ZnDictionary : public ZnKeyedIndex {
 public:
  /// The next prime at or above `size` buckets of four slots.
  explicit ZnDictionary(int size = 53) : ZnKeyedIndex(size), bExact(true) {}

  /// Adds and returns null; if the key exists nothing changes and the
  /// stored value is returned.
  virtual void *Add(ZnString const & key, void *value);
  /// Stores the value in any case; returns the former value, or null.
  virtual void *Replace(ZnString const & key, void *value);
  /// Removes the key; returns its value, or null if it was absent.
  virtual void *Delete(ZnString const & key);
  /// The stored value, or null.
  virtual void *Find(ZnString const & key);

  /// Makes the dictionary ignore case; only while it is empty (false, and
  /// no change, otherwise).
  bool HashCaseInsensitive();
  /// Copies the other table's entries, then its case mode if it is a dictionary.
  void Copy(ZnHashTable &other) override;

 private:
  class ZnDictionaryEntry;

  bool bExact;
};

#endif  // ZNUTIL_CONTAINERS_ZNDICTIONARY_H
