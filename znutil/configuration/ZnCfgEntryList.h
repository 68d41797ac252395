// ZnCfgEntryList: the entries of a section, in entry order, owned.
//
//   ZnCfgEntryList *entries = new ZnCfgEntryList;
//   if (!entries->Add(entry)) delete entry;   // an equal entry is there
//   ZnCfgEntry *port = entries->FindEntry("Port", "all");
//
// Add and Replace adopt the item when they succeed and call its Release;
// Add refuses an item equal to one already there, Replace destroys the one
// it replaces. The list destroys its entries with itself.
#ifndef ZNUTIL_CONFIGURATION_ZNCFGENTRYLIST_H
#define ZNUTIL_CONFIGURATION_ZNCFGENTRYLIST_H

#include <znutil/configuration/ZnCfgEntry.h>
#include <znutil/configuration/ZnCfgFileParserItem.h>
#include <znutil/containers/ZnTOrderedList.h>
#include <znutil/platform/Export.h>

template <>
inline void ZnTListItemDestroy<ZnCfgEntry>::DestroyTypedItem(ZnCfgEntry *entry) {
  delete entry;
}

class ZNUTIL_API ZnCfgEntryList : public ZnTOrderedList<ZnCfgEntry>, public ZnCfgFileParserItem {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS
  using ZnTOrderedList<ZnCfgEntry>::Add;
  using ZnTOrderedList<ZnCfgEntry>::Replace;

  explicit ZnCfgEntryList(bool tracked = true);
  ~ZnCfgEntryList() override;

  /// Adopts `entry` unless an equal one is there; false then.
  bool Add(ZnCfgEntry *entry) override;
  /// Adopts `entry`, destroying an equal one; true.
  bool Replace(ZnCfgEntry *entry) override;
  /// The entry of that name and machine, or null.
  ZnCfgEntry *FindEntry(ZnString const &name, ZnString const &machine) const;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGENTRYLIST_H
