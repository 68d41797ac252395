#include <znutil/configuration/internal/CfgEntryIndex.h>

#include <cctype>
#include <cstring>

#include <znutil/configuration/ZnCfgEntryList.h>
#include <znutil/configuration/ZnCfgSectionList.h>
#include <znutil/containers/ZnListContext.h>

namespace znutil {
namespace detail {

namespace {

constexpr std::uint64_t kFnvOffset = 14695981039346656037ull;
constexpr std::uint64_t kFnvPrime = 1099511628211ull;
constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15ull;

// ASCII letters fold by arithmetic, the rest as the locale says.
int Fold(unsigned char c) {
  if (c < 0x80) return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c;
  return std::tolower(c);
}

// Two independent hashes of the folded bytes of `text`, continued from
// `key`.
CfgKey HashFolded(CfgKey key, char const *text) {
  for (; *text != '\0'; ++text) {
    auto const folded = static_cast<std::uint64_t>(Fold(static_cast<unsigned char>(*text)));
    key.uFirst = (key.uFirst ^ folded) * kFnvPrime;
    key.uSecond = (key.uSecond + folded + 1) * kGolden;
    key.uSecond ^= key.uSecond >> 29;
  }
  return key;
}

// The end of one key's text: a section name and an entry's differ.
CfgKey Separate(CfgKey key) { return CfgKey{(key.uFirst ^ 0x100) * kFnvPrime, (key.uSecond + 0x101) * kGolden}; }

// An entry's key is its name, then its machine, unless the name holds a
// zero byte: the joined text ends there.
char const *MachinePart(ZnString const &name, char const *machine) {
  return std::strlen(name.Chars()) == static_cast<std::size_t>(name.Length()) ? machine : "";
}

// The home slot: the low bits of an FNV product depend on the low bits of
// the text alone, so the slot is taken from the mixed high bits.
std::size_t Home(CfgKey const &key) { return static_cast<std::size_t>(((key.uFirst ^ (key.uFirst >> 32)) * kGolden) >> 32); }

constexpr std::size_t kFirstSize = 64;
// Eight filter bits per slot: about 16 per key, few false hits.
constexpr std::size_t kFilterBitsPerSlot = 8;

}  // namespace

CfgKey CfgKey::OfSection(ZnString const &name) { return HashFolded(CfgKey{kFnvOffset, 0}, name.Chars()); }

CfgKey CfgKey::OfEntry(CfgKey const &section, ZnString const &name, char const *machine) {
  return WithMachine(OfName(section, name), name, machine);
}

CfgKey CfgKey::OfName(CfgKey const &section, ZnString const &name) {
  return HashFolded(Separate(section), name.Chars());
}

CfgKey CfgKey::WithMachine(CfgKey const &ofName, ZnString const &name, char const *machine) {
  return HashFolded(ofName, MachinePart(name, machine));
}

void CfgEntryIndex::Rebuild(ZnCfgSectionList const *sections) {
  vecSlots.clear();
  vecFilter.clear();
  uCount = 0;
  bReliable = true;
  if (sections == nullptr) return;
  ZnListContext sectionAt;
  for (void *item = sections->GetFirst(sectionAt); item != nullptr; item = sections->GetNext(sectionAt)) {
    auto *section = static_cast<ZnCfgSection *>(item);
    AddSection(section);
    ZnCfgEntryList const *entries = section->Entries();
    if (entries == nullptr) continue;
    CfgKey const sectionKey = CfgKey::OfSection(section->Name());
    ZnListContext entryAt;
    for (void *entry = entries->GetFirst(entryAt); entry != nullptr; entry = entries->GetNext(entryAt))
      AddEntry(sectionKey, static_cast<ZnCfgEntry *>(entry));
  }
}

void CfgEntryIndex::AddSection(ZnCfgSection *section) { Insert(CfgKey::OfSection(section->Name()), section, nullptr); }

void CfgEntryIndex::AddEntry(CfgKey const &section, ZnCfgEntry *entry) {
  ckLast = CfgKey::OfEntry(section, entry->Name(), entry->Machine().Chars());
  Insert(ckLast, entry, entry->Data());
}

void CfgEntryIndex::SetLastData(ZnCfgData *data) {
  if (Slot const *slot = bReliable ? Find(ckLast) : nullptr) const_cast<Slot *>(slot)->pData = data;
}

ZnCfgSection *CfgEntryIndex::FindSection(CfgKey const &key) const {
  Slot const *slot = Find(key);
  return slot != nullptr ? static_cast<ZnCfgSection *>(slot->pObject) : nullptr;
}

ZnCfgEntry *CfgEntryIndex::FindEntry(CfgKey const &key, ZnCfgData **data) const {
  Slot const *slot = Find(key);
  if (slot != nullptr) ckLast = key;
  *data = slot != nullptr ? slot->pData : nullptr;
  return slot != nullptr ? static_cast<ZnCfgEntry *>(slot->pObject) : nullptr;
}

CfgEntryIndex::Slot const *CfgEntryIndex::Find(CfgKey const &key) const {
  if (vecSlots.empty() || !MayHold(key)) return nullptr;
  std::size_t const mask = vecSlots.size() - 1;
  for (std::size_t at = Home(key) & mask;; at = (at + 1) & mask) {
    Slot const &slot = vecSlots[at];
    if (slot.pObject == nullptr) return nullptr;
    if (slot.key == key) return &slot;
  }
}

std::size_t CfgEntryIndex::FilterBit(CfgKey const &key) const { return key.uSecond & (vecFilter.size() * 64 - 1); }

bool CfgEntryIndex::MayHold(CfgKey const &key) const {
  std::size_t const bit = FilterBit(key);
  return (vecFilter[bit / 64] & (std::uint64_t{1} << (bit % 64))) != 0;
}

void CfgEntryIndex::Insert(CfgKey const &key, void *object, ZnCfgData *data) {
  if ((uCount + 1) * 2 > vecSlots.size()) Grow();
  std::size_t const bit = FilterBit(key);
  vecFilter[bit / 64] |= std::uint64_t{1} << (bit % 64);
  std::size_t const mask = vecSlots.size() - 1;
  for (std::size_t at = Home(key) & mask;; at = (at + 1) & mask) {
    Slot &slot = vecSlots[at];
    if (slot.pObject == nullptr) {
      slot = Slot{key, object, data};
      ++uCount;
      return;
    }
    if (slot.key == key) {
      bReliable = false;  // two keys, one hash
      return;
    }
  }
}

void CfgEntryIndex::Grow() {
  std::vector<Slot> old;
  old.swap(vecSlots);
  vecSlots.assign(old.empty() ? kFirstSize : old.size() * 2, Slot{CfgKey{0, 0}, nullptr, nullptr});
  vecFilter.assign(vecSlots.size() * kFilterBitsPerSlot / 64, 0);
  uCount = 0;
  for (Slot const &slot : old) {
    if (slot.pObject != nullptr) Insert(slot.key, slot.pObject, slot.pData);
  }
}

}  // namespace detail
}  // namespace znutil
