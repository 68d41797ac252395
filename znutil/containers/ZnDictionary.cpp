#include <znutil/containers/ZnDictionary.h>

#include <znutil/containers/ZnHashTableStatistics.h>
#include <znutil/containers/internal/ZnKeyedEntry.h>

namespace {

struct StringKey {
  static ZnULong Hash(ZnString const &key) { return key.Hash(); }
  static bool Equal(ZnString const &left, ZnString const &right) { return left == right; }
};

}  // namespace

// Every entry, probes included, is built with the dictionary's case mode:
// a case-insensitive one lowers its own copy of the key.
class ZnDictionary::ZnDictionaryEntry : public znutil::detail::ZnKeyedEntry<ZnString, StringKey> {
 public:
  ZnDictionaryEntry(ZnString const &key, void *value, bool exact) : ZnKeyedEntry(key, value), bExact(exact) {
    if (!bExact) key_.ConvertToLower();
  }
  ZnHashTableItem *Clone() const override { return new ZnDictionaryEntry(*this); }

 private:
  bool bExact;
};

void *ZnDictionary::Add(ZnString const &key, void *value) {
  return AddEntry(new ZnDictionaryEntry(key, value, bExact));
}

void *ZnDictionary::Replace(ZnString const &key, void *value) {
  return ReplaceEntry(new ZnDictionaryEntry(key, value, bExact));
}

void *ZnDictionary::Delete(ZnString const &key) {
  ZnDictionaryEntry probe(key, nullptr, bExact);
  return DeleteEntry(probe);
}

void *ZnDictionary::Find(ZnString const &key) {
  ZnDictionaryEntry probe(key, nullptr, bExact);
  return FindEntry(probe);
}

bool ZnDictionary::HashCaseInsensitive() {
  ZnHashTableStatistics stats;
  Statistics(&stats, 3);
  if (stats.iItemCount > 0) return false;
  bExact = false;
  return true;
}

void ZnDictionary::Copy(ZnHashTable &other) {
  ZnHashTable::Copy(other);
  if (auto *dictionary = dynamic_cast<ZnDictionary *>(&other)) bExact = dictionary->bExact;
}
