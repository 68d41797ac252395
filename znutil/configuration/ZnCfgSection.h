// ZnCfgSection: a named section and its entries.
//
//   ZnCfgSection *section = new ZnCfgSection("Display", new ZnCfgEntryList);
//   section->Entries()->Add(entry);
//
// The section owns its entry list. Sections order by ZnString::CaseCompare
// of their names, so Display and DISPLAY are one section.
#ifndef ZNUTIL_CONFIGURATION_ZNCFGSECTION_H
#define ZNUTIL_CONFIGURATION_ZNCFGSECTION_H

#include <znutil/configuration/ZnCfgEntryList.h>
#include <znutil/configuration/ZnCfgFileParserItem.h>
#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnCfgSection : public ZnCfgFileParserItem {
 public:
  /// Adopts `entries` (which may be null) and calls its Release.
  ZnCfgSection(ZnString const &name, ZnCfgEntryList *entries, bool tracked = true);
  /// Destroys the entry list.
  ~ZnCfgSection() override;

  ZnString const &Name() const { return fsName; }
  ZnCfgEntryList *Entries() const { return plEntries; }

  /// The order of sections: below 0, 0 or above 0.
  int CompareTo(ZnCfgSection const &other) const { return fsName.CaseCompare(other.fsName); }

 private:
  ZnString fsName;
  ZnCfgEntryList *plEntries;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGSECTION_H
