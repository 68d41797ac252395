// ZnKeyedIndex: what ZnIndex, ZnIndex64, ZnDictionary and ZnUuidIndex share:
// a hash table of entries that own their key but not their value, with
// four slots a bucket.
//
// Values are never owned: destroying an index destroys its entries and
// leaves the values alone. A stored null value cannot be told from an
// absent key.
#ifndef ZNUTIL_CONTAINERS_ZNKEYEDINDEX_H
#define ZNUTIL_CONTAINERS_ZNKEYEDINDEX_H

#include <znutil/containers/ZnHashTable.h>
#include <znutil/platform/Export.h>

class ZNUTIL_API ZnKeyedIndex : public ZnHashTable {
 public:
  /// A table of the next prime at or above `size` buckets of four slots.
  explicit ZnKeyedIndex(int size) : ZnHashTable(size, 4) {}
  /// Destroys the entries; the values are left alone.
  ~ZnKeyedIndex() override;

 protected:
  /// Adds `entry` and returns null; if its key exists, destroys `entry`
  /// and returns the stored value.
  void *AddEntry(ZnHashTableItem *entry);
  /// Stores `entry`; returns the value of the entry it replaced, which is
  /// destroyed, or null.
  void *ReplaceEntry(ZnHashTableItem *entry);
  /// Removes and destroys the entry equal to `probe`; its value, or null.
  void *DeleteEntry(ZnHashTableItem &probe);
  /// The value of the entry equal to `probe`, or null.
  void *FindEntry(ZnHashTableItem &probe) const;
};

#endif  // ZNUTIL_CONTAINERS_ZNKEYEDINDEX_H
