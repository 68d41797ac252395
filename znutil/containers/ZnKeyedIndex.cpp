#include <znutil/containers/ZnKeyedIndex.h>

ZnKeyedIndex::~ZnKeyedIndex() { ClearItems(nullptr); }

void *ZnKeyedIndex::AddEntry(ZnHashTableItem *entry) {
  ZnHashTableItem *existing = nullptr;
  if (AddItem(entry, existing) == ZnHTSuccess) return nullptr;
  delete entry;
  return existing->GetData();
}

void *ZnKeyedIndex::ReplaceEntry(ZnHashTableItem *entry) {
  ZnHashTableItem *old = nullptr;
  ReplaceItem(entry, old);
  if (old == nullptr) return nullptr;
  void *value = old->GetData();
  delete old;
  return value;
}

void *ZnKeyedIndex::DeleteEntry(ZnHashTableItem &probe) {
  ZnHashTableItem *removed = nullptr;
  if (DeleteItem(&probe, removed) != ZnHTSuccess) return nullptr;
  void *value = removed->GetData();
  delete removed;
  return value;
}

void *ZnKeyedIndex::FindEntry(ZnHashTableItem &probe) const {
  ZnHashTableItem *found = nullptr;
  return FindItem(&probe, found) == ZnHTSuccess ? found->GetData() : nullptr;
}
