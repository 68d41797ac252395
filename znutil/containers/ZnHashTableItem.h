// ZnHashTableItem: an entry of a ZnHashTable, which knows its own hash, key,
// value, copy and equality, so that the table knows no key type.
//
//   class IntItem : public ZnHashTableItem {
//     ZnULong Hash() const override { return ZnHash(&iKey, 4); }
//     bool Equals(ZnHashTableItem const *other) const override { ... same key ... }
//     ...
//   };
#ifndef ZNUTIL_CONTAINERS_ZNHASHTABLEITEM_H
#define ZNUTIL_CONTAINERS_ZNHASHTABLEITEM_H

#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

class ZNUTIL_API ZnHashTableItem {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  virtual ~ZnHashTableItem();
  /// The item's 32-bit hash.
  virtual ZnULong Hash() const = 0;
  /// A pointer to the item's key.
  virtual void *GetKey() const = 0;
  /// The item's value.
  virtual void *GetData() const = 0;
  /// A new item equal to this one.
  virtual ZnHashTableItem *Clone() const = 0;
  /// True when other has the same key.
  virtual bool Equals(ZnHashTableItem const *other) const = 0;
};

#endif  // ZNUTIL_CONTAINERS_ZNHASHTABLEITEM_H
