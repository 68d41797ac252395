#include <znutil/containers/ZnSortedList.h>

ZnSortedListItem::~ZnSortedListItem() {}

void ZnSortedList::Insert(void *item, EnumListPosition, ZnListContext const &) {
  if (item != nullptr) {
    ZnString const key = static_cast<ZnSortedListItem *>(item)->GetSortKey();
    ZnListContext position;
    for (void *stored = GetFirst(position); stored != nullptr; stored = GetNext(position)) {
      if (key < static_cast<ZnSortedListItem *>(stored)->GetSortKey()) {
        InsertAtNode(item, Before, static_cast<ZnDblListItem *>(position.Data()));
        return;
      }
    }
  }
  InsertAtNode(item, After, nullptr);
}
