#include <znutil/configuration/ZnCfgFileParserItem.h>

#include <znutil/configuration/internal/ParserItemList.h>

using znutil::detail::ParserItemList;

ZnCfgFileParserItem::ZnCfgFileParserItem(bool tracked) {
  if (!tracked) return;
  if (ParserItemList *list = ParserItemList::Current()) list->Append(this);
}

ZnCfgFileParserItem::~ZnCfgFileParserItem() { ZnCfgFileParserItem::Release(); }

bool ZnCfgFileParserItem::Release() {
  ParserItemList *list = ParserItemList::Current();
  return list != nullptr && list->Remove(this);
}
