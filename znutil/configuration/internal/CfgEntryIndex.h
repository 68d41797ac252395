// An index of a configuration tree by hash, so that a lookup costs a hash
// of its keys and a cache line or two, not a walk down two trees with a
// case-insensitive comparison at each node.
//
// Keys fold case as ZnString::CaseCompare does in the C locale (see
// docs/porting.md), and an entry's key is its section's name, then its
// name and machine joined, as the entry lists order them, so the index
// finds what the lists would find. A key stands for its 128-bit hash: two
// keys of the tree with one hash would make the index unreliable, which it
// then says, and the owner walks the tree instead. The owner keeps it in
// step with the tree: Rebuild for a new tree, Add for a new section or
// entry, SetData for a new value.
#ifndef ZNUTIL_CONFIGURATION_INTERNAL_CFGENTRYINDEX_H
#define ZNUTIL_CONFIGURATION_INTERNAL_CFGENTRYINDEX_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include <znutil/text/ZnString.h>

class ZnCfgData;
class ZnCfgEntry;
class ZnCfgSection;
class ZnCfgSectionList;

namespace znutil {
namespace detail {

/// A 128-bit hash of folded text.
struct CfgKey {
  std::uint64_t uFirst;
  std::uint64_t uSecond;
  /// The key of a section's name.
  static CfgKey OfSection(ZnString const &name);
  /// The key of an entry of the section of key `section`.
  static CfgKey OfEntry(CfgKey const &section, ZnString const &name, char const *machine);
  /// The key of an entry's name alone: OfEntry is OfName, then WithMachine,
  /// so that one name can be tried with several machines.
  static CfgKey OfName(CfgKey const &section, ZnString const &name);
  static CfgKey WithMachine(CfgKey const &ofName, ZnString const &name, char const *machine);
  bool operator==(CfgKey const &other) const { return uFirst == other.uFirst && uSecond == other.uSecond; }
};

class CfgEntryIndex {
 public:
  /// Indexes every section and entry of `sections` (null: nothing).
  void Rebuild(ZnCfgSectionList const *sections);
  void AddSection(ZnCfgSection *section);
  void AddEntry(CfgKey const &section, ZnCfgEntry *entry);
  /// Notes the new value of the entry found or added last.
  void SetLastData(ZnCfgData *data);
  /// False when two keys share a hash: finds are then not to be trusted.
  bool Reliable() const { return bReliable; }

  /// The section of that key, or null.
  ZnCfgSection *FindSection(CfgKey const &key) const;
  /// The entry of that key, or null; `*data` receives its value. A hit
  /// becomes the entry found last.
  ZnCfgEntry *FindEntry(CfgKey const &key, ZnCfgData **data) const;

 private:
  // 32 bytes, so that a probe reads one cache line. The object is a
  // section or an entry; a slot with none is free.
  struct alignas(32) Slot {
    CfgKey key;
    void *pObject;
    ZnCfgData *pData;
  };
  Slot const *Find(CfgKey const &key) const;
  void Insert(CfgKey const &key, void *object, ZnCfgData *data);
  void Grow();
  std::size_t FilterBit(CfgKey const &key) const;
  bool MayHold(CfgKey const &key) const;

  // Open addressing with linear probing; a power of two long.
  std::vector<Slot> vecSlots;
  std::size_t uCount = 0;
  // Bits of key hashes, small enough to stay in a near cache: a clear bit
  // answers a miss (an entry of this machine, usually) without a probe.
  std::vector<std::uint64_t> vecFilter;
  bool bReliable = true;
  // The key of the entry found or added last, for SetLastData: a Set finds
  // or adds its entry and then gives it its value, all under the owner's
  // lock.
  mutable CfgKey ckLast{0, 0};
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_CONFIGURATION_INTERNAL_CFGENTRYINDEX_H
