#include <znutil/configuration/ZnCfgSection.h>

#include <znutil/configuration/ZnCfgEntryList.h>

ZnCfgSection::ZnCfgSection(ZnString const &name, ZnCfgEntryList *entries, bool tracked)
    : ZnCfgFileParserItem(tracked), fsName(name), plEntries(entries) {
  if (plEntries != nullptr) static_cast<ZnCfgFileParserItem *>(plEntries)->Release();
}

ZnCfgSection::~ZnCfgSection() { delete plEntries; }
