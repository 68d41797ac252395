#include <znutil/configuration/ZnCfgEntryList.h>

ZnCfgEntryList::ZnCfgEntryList(bool tracked) : ZnTOrderedList<ZnCfgEntry>(true), ZnCfgFileParserItem(tracked) {}

ZnCfgEntryList::~ZnCfgEntryList() = default;

bool ZnCfgEntryList::Add(ZnCfgEntry *entry) {
  if (!ZnTOrderedList<ZnCfgEntry>::Add(entry)) return false;
  entry->Release();
  return true;
}

bool ZnCfgEntryList::Replace(ZnCfgEntry *entry) {
  // Replacing an entry by itself would destroy it and keep it.
  if (FindEntry(entry->Name(), entry->Machine()) != entry) ZnTOrderedList<ZnCfgEntry>::Replace(entry);
  entry->Release();
  return true;
}

ZnCfgEntry *ZnCfgEntryList::FindEntry(ZnString const &name, ZnString const &machine) const {
  ZnCfgEntry key(name, machine, nullptr, false);
  ZnTListItemCompare<ZnCfgEntry> compare;
  return static_cast<ZnCfgEntry *>(ZnOrderedList::Find(&key, compare));
}
