#include <znutil/configuration/internal/ParserItemList.h>

#include <algorithm>
#include <utility>

#include <znutil/configuration/ZnCfgFileParserItem.h>

namespace znutil {
namespace detail {
namespace {

// Initial-exec: one load, no call, on every construction and Release.
__attribute__((tls_model("initial-exec"))) thread_local ParserItemList *tlCurrentList = nullptr;

}  // namespace

bool ParserItemList::Remove(ZnCfgFileParserItem *item) {
  auto const found = std::find(vItems.rbegin(), vItems.rend(), item);
  if (found == vItems.rend()) return false;
  vItems.erase(std::next(found).base());
  return true;
}

void ParserItemList::DestroyAll() {
  // The list is emptied first: the destructors look for themselves on it.
  std::vector<ZnCfgFileParserItem *> items;
  items.swap(vItems);
  for (ZnCfgFileParserItem *item : items) delete item;
}

ParserItemList *ParserItemList::Current() { return tlCurrentList; }

ParserItemScope::ParserItemScope(ParserItemList &list) : plPrevious(tlCurrentList) { tlCurrentList = &list; }

ParserItemScope::~ParserItemScope() { tlCurrentList = plPrevious; }

}  // namespace detail
}  // namespace znutil
