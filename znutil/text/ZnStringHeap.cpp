#include <znutil/text/ZnStringHeap.h>

ZnString *ZnStringHeap::AllocString() { return Add(ZnString()); }

void ZnStringHeap::ReleaseString(ZnString *text) {
  ZnListContext found = Find(static_cast<void *>(text));
  if (GetCurrent(found) == nullptr) return;
  delete static_cast<ZnString *>(ZnDblList::Delete(found));
}

void ZnStringHeap::ReleaseAll() { ZnStringList::Clear(); }
