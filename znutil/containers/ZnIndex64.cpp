#include <znutil/containers/ZnIndex64.h>

#include <znutil/containers/internal/ZnKeyedEntry.h>

class ZnIndex64::ZnIndex64Entry
    : public znutil::detail::ZnKeyedEntry<unsigned long long, znutil::detail::ZnIntegerKey<unsigned long long>> {
  using ZnKeyedEntry::ZnKeyedEntry;
};

void *ZnIndex64::Add(unsigned long long key, void *value) { return AddEntry(new ZnIndex64Entry(key, value)); }

void *ZnIndex64::Replace(unsigned long long key, void *value) { return ReplaceEntry(new ZnIndex64Entry(key, value)); }

void *ZnIndex64::Delete(unsigned long long key) {
  ZnIndex64Entry probe(key, nullptr);
  return DeleteEntry(probe);
}

void *ZnIndex64::Find(unsigned long long key) {
  ZnIndex64Entry probe(key, nullptr);
  return FindEntry(probe);
}
