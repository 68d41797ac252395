#include <znutil/configuration/ZnCfgSectionList.h>

#include <initializer_list>
#include <string>

#include <znutil/configuration/ZnCfgEntryList.h>

namespace {

void AppendLine(std::string &file, std::initializer_list<char const *> pieces) {
  for (char const *piece : pieces) file += piece;
  file += "\r\n";
}

void AppendEntry(std::string &file, ZnCfgEntry const &entry) {
  ZnCfgData const *data = entry.Data();
  // An entry between its creation and its first value has nothing to write.
  if (data == nullptr) return;
  AppendLine(file, {"\"", entry.Name().Chars(), "\" (", entry.Machine().Chars(), ") =", data->FormatType().Chars(),
                    " ", data->FormatValue().Chars()});
}

void AppendSection(std::string &file, ZnCfgSection const &section) {
  AppendLine(file, {"section \"", section.Name().Chars(), "\""});
  if (ZnCfgEntryList *entries = section.Entries()) {
    ZnListContext position;
    for (ZnCfgEntry *entry = entries->First(position); entry != nullptr; entry = entries->Next(position))
      AppendEntry(file, *entry);
  }
  file += "\r\n";
}

}  // namespace

ZnCfgSectionList::ZnCfgSectionList(bool tracked)
    : ZnTOrderedList<ZnCfgSection>(true), ZnCfgFileParserItem(tracked) {}

ZnCfgSectionList::~ZnCfgSectionList() = default;

bool ZnCfgSectionList::Add(ZnCfgSection *section) {
  if (!ZnTOrderedList<ZnCfgSection>::Add(section)) return false;
  section->Release();
  return true;
}

bool ZnCfgSectionList::Replace(ZnCfgSection *section) {
  // Replacing a section by itself would destroy it and keep it.
  if (FindSection(section->Name()) != section) ZnTOrderedList<ZnCfgSection>::Replace(section);
  section->Release();
  return true;
}

ZnCfgSection *ZnCfgSectionList::FindSection(ZnString const &name) const {
  ZnCfgSection key(name, nullptr, false);
  ZnTListItemCompare<ZnCfgSection> compare;
  return static_cast<ZnCfgSection *>(ZnOrderedList::Find(&key, compare));
}

ZnString ZnCfgSectionList::FormatFile() const {
  std::string file;
  ZnListContext position;
  for (void *section = GetFirst(position); section != nullptr; section = GetNext(position))
    AppendSection(file, *static_cast<ZnCfgSection *>(section));
  return ZnString(file.c_str());
}
