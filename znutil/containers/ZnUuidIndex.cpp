#include <znutil/containers/ZnUuidIndex.h>

#include <znutil/containers/internal/ZnKeyedEntry.h>

namespace {

struct UuidKey {
  static ZnULong Hash(ZnUuid const &key) { return key.Hash(); }
  static bool Equal(ZnUuid const &left, ZnUuid const &right) { return left == right; }
};

}  // namespace

class ZnUuidIndex::ZnUuidIndexEntry : public znutil::detail::ZnKeyedEntry<ZnUuid, UuidKey> {
  using ZnKeyedEntry::ZnKeyedEntry;
};

void *ZnUuidIndex::Add(ZnUuid const &key, void *value) { return AddEntry(new ZnUuidIndexEntry(key, value)); }

void *ZnUuidIndex::Replace(ZnUuid const &key, void *value) { return ReplaceEntry(new ZnUuidIndexEntry(key, value)); }

void *ZnUuidIndex::Delete(ZnUuid const &key) {
  ZnUuidIndexEntry probe(key, nullptr);
  return DeleteEntry(probe);
}

void *ZnUuidIndex::Find(ZnUuid const &key) {
  ZnUuidIndexEntry probe(key, nullptr);
  return FindEntry(probe);
}
