// ZnCfgSectionList: the sections of a configuration file, in section order,
// owned; the result of a parse.
//
//   ZnCfgSection *display = sections->FindSection("Display");
//   ZnString text = sections->FormatFile();   // the file as written
//
// Add and Replace adopt the item when they succeed and call its Release;
// Add refuses an item equal to one already there, Replace destroys the one
// it replaces. The list destroys its sections with itself.
#ifndef ZNUTIL_CONFIGURATION_ZNCFGSECTIONLIST_H
#define ZNUTIL_CONFIGURATION_ZNCFGSECTIONLIST_H

#include <znutil/configuration/ZnCfgFileParserItem.h>
#include <znutil/configuration/ZnCfgSection.h>
#include <znutil/containers/ZnTOrderedList.h>
#include <znutil/platform/Export.h>

template <>
inline void ZnTListItemDestroy<ZnCfgSection>::DestroyTypedItem(ZnCfgSection *section) {
  delete section;
}

class ZNUTIL_API ZnCfgSectionList : public ZnTOrderedList<ZnCfgSection>, public ZnCfgFileParserItem {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS
  using ZnTOrderedList<ZnCfgSection>::Add;
  using ZnTOrderedList<ZnCfgSection>::Replace;

  explicit ZnCfgSectionList(bool tracked = true);
  ~ZnCfgSectionList() override;

  /// Adopts `section` unless an equal one is there; false then.
  bool Add(ZnCfgSection *section) override;
  /// Adopts `section`, destroying an equal one; true.
  bool Replace(ZnCfgSection *section) override;
  /// The section of that name, or null.
  ZnCfgSection *FindSection(ZnString const &name) const;

  /// The whole file as the writer makes it, lines ending in CR LF: for each
  /// section its line `section "Name"`, a line per entry
  /// `"Name" (machine) =(type) value`, then an empty line.
  ZnString FormatFile() const;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGSECTIONLIST_H
