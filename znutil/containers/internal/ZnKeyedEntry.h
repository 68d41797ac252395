// The entry of a keyed index: a key it owns and a value it does not.
// `Traits` gives the key's hash and equality. The entry keeps its key's
// hash, so that a lookup compares keys only when the hashes agree.
#ifndef ZNUTIL_CONTAINERS_INTERNAL_ZNKEYEDENTRY_H
#define ZNUTIL_CONTAINERS_INTERNAL_ZNKEYEDENTRY_H

#include <cstddef>

#include <znutil/containers/ZnHash.h>
#include <znutil/containers/ZnHashTableItem.h>

namespace znutil {
namespace detail {

/// Integer keys hash their little-endian bytes: 4 for ZnIndex, 8 for ZnIndex64.
template <typename Key>
struct ZnIntegerKey {
  static ZnULong Hash(Key const &key) {
    unsigned char bytes[sizeof(Key)];
    for (std::size_t i = 0; i < sizeof(Key); ++i) bytes[i] = static_cast<unsigned char>(key >> (8 * i));
    return ZnHash(bytes, sizeof bytes);
  }
  static bool Equal(Key const &left, Key const &right) { return left == right; }
};

template <typename Key, typename Traits>
class ZnKeyedEntry : public ZnHashTableItem {
 public:
  ZnKeyedEntry(Key const &key, void *value) : key_(key), pValue(value), udwHash(0) {}
  ZnULong Hash() const override {
    if (udwHash == 0) udwHash = Traits::Hash(key_);
    return udwHash;
  }
  void *GetKey() const override { return const_cast<Key *>(&key_); }
  void *GetData() const override { return pValue; }
  ZnHashTableItem *Clone() const override { return new ZnKeyedEntry(*this); }
  bool Equals(ZnHashTableItem const *other) const override {
    auto const *entry = static_cast<ZnKeyedEntry const *>(other);
    // Different hashes mean different keys: spares reaching the other key.
    // Both are entries of this class, so the hashes need no virtual call.
    return ZnKeyedEntry::Hash() == entry->ZnKeyedEntry::Hash() && Traits::Equal(key_, entry->key_);
  }

 protected:
  Key key_;

 private:
  void *pValue;
  // The key's hash, computed at first need; 0 means not yet (a key whose
  // hash is 0 is merely hashed again).
  mutable ZnULong udwHash;
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_CONTAINERS_INTERNAL_ZNKEYEDENTRY_H
