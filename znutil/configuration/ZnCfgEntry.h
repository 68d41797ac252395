// ZnCfgEntry: one configuration entry, identified by its name and machine.
//
//   ZnCfgEntry *entry = new ZnCfgEntry("Port", "all", new ZnCfgIntegerData(80));
//   entry->SetData(new ZnCfgIntegerData(8080));   // the old value is destroyed
//
// The entry owns its data. Entries order by ZnString::CaseCompare of name
// and machine concatenated with no separator, so "ab" on machine "c" and
// "a" on machine "bc" are the same entry: that is the defined identity.
#ifndef ZNUTIL_CONFIGURATION_ZNCFGENTRY_H
#define ZNUTIL_CONFIGURATION_ZNCFGENTRY_H

#include <znutil/configuration/ZnCfgData.h>
#include <znutil/configuration/ZnCfgFileParserItem.h>
#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnCfgEntry : public ZnCfgFileParserItem {
 public:
  /// Adopts `data` (which may be null) and calls its Release.
  ZnCfgEntry(ZnString const &name, ZnString const &machine, ZnCfgData *data, bool tracked = true);
  /// Destroys the data.
  ~ZnCfgEntry() override;

  ZnString const &Name() const { return fsName; }
  ZnString const &Machine() const { return fsMachine; }
  /// The value, or null before the first one.
  ZnCfgData *Data() const { return pData; }
  /// Destroys the value held and adopts `data`, calling its Release.
  void SetData(ZnCfgData *data);

  /// The order of entries: below 0, 0 or above 0.
  int CompareTo(ZnCfgEntry const &other) const;

 private:
  ZnString fsName;
  ZnString fsMachine;
  ZnCfgData *pData;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGENTRY_H
