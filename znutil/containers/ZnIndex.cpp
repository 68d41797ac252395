#include <znutil/containers/ZnIndex.h>

#include <znutil/containers/internal/ZnKeyedEntry.h>

class ZnIndex::ZnIndexEntry : public znutil::detail::ZnKeyedEntry<ZnULong, znutil::detail::ZnIntegerKey<ZnULong>> {
  using ZnKeyedEntry::ZnKeyedEntry;
};

void *ZnIndex::Add(ZnULong key, void *value) { return AddEntry(new ZnIndexEntry(key, value)); }

void *ZnIndex::Replace(ZnULong key, void *value) { return ReplaceEntry(new ZnIndexEntry(key, value)); }

void *ZnIndex::Delete(ZnULong key) {
  ZnIndexEntry probe(key, nullptr);
  return DeleteEntry(probe);
}

void *ZnIndex::Find(ZnULong key) {
  ZnIndexEntry probe(key, nullptr);
  return FindEntry(probe);
}
