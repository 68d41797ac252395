// ZnCfgFile: one configuration file in memory, its tree of sections and
// typed entries kept in step with the disk by Refresh and Flush.
//
//   ZnCfgFile file("App.cfg");
//   file.Refresh();                                   // reads the file
//   int width = 640;
//   file.GetIntegerEntry("View", "Width", "alpha7", &width);
//   file.SetIntegerEntry("View", "Width", "alpha7", 800);
//   file.Flush();                                     // writes it back
//
// Every entry has a machine key: a lookup takes the entry of the machine
// given, else the one of machine "all". A Set creates entries for "all"
// only (deliberate: machine-specific entries are made by hand), so a Set
// on a machine with no entry of its own changes the one all machines see.
//
// Two time stamps decide between memory and disk: the last change to the
// tree and the file's write time as last read or written. Flush writes
// only a strictly newer tree, Refresh reads only a strictly newer file, so
// that two processes on one file, or an editor, settle on the newest state.
// The manager's thread makes both calls (see ZnConfiguration.h).
#ifndef ZNUTIL_CONFIGURATION_ZNCFGFILE_H
#define ZNUTIL_CONFIGURATION_ZNCFGFILE_H

#include <znutil/concurrency/ZnCriticalSection.h>
#include <znutil/platform/Export.h>
#include <znutil/system/ZnFileTime.h>
#include <znutil/text/ZnString.h>
#include <znutil/values/ZnBinary.h>

class ZnCfgData;
class ZnCfgEntry;
class ZnCfgEntryList;
class ZnCfgSection;
class ZnCfgSectionList;
class ZnFileInformation;

namespace znutil {
namespace detail {
class CfgEntryIndex;
struct CfgKey;
}  // namespace detail
}  // namespace znutil

class ZNUTIL_API ZnCfgFile {
 public:
  /// Status codes of every Get and Set.
  static constexpr unsigned long CfgOk = 0;
  static constexpr unsigned long CfgNoSection = 1;   ///< no section of that name
  static constexpr unsigned long CfgNoEntry = 2;     ///< no entry for that machine nor for "all"
  static constexpr unsigned long CfgNoData = 3;      ///< the file has no tree
  static constexpr unsigned long CfgNullResult = 4;  ///< the result pointer was null
  static constexpr unsigned long CfgNotText = 5;
  static constexpr unsigned long CfgNotInteger = 6;
  static constexpr unsigned long CfgNotFloat = 7;
  static constexpr unsigned long CfgNotBinary = 8;

  /// No tree and both time stamps at zero: the first Refresh of an
  /// existing file reads it, and nothing is flushed over it unchanged.
  explicit ZnCfgFile(ZnString const &fileName);
  ZnCfgFile(ZnCfgFile const &) = delete;
  ZnCfgFile &operator=(ZnCfgFile const &) = delete;
  virtual ~ZnCfgFile();

  /// Reads a value, exactly or by conversion (text converts to anything
  /// but binary; binary converts to nothing). The result is untouched on
  /// failure.
  unsigned long GetTextEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                             ZnString *result);
  unsigned long GetIntegerEntry(ZnString const &section, ZnString const &entry, ZnString const &machine, int *result);
  unsigned long GetFloatEntry(ZnString const &section, ZnString const &entry, ZnString const &machine, float *result);
  unsigned long GetBinaryEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                               ZnBinary *result);

  /// Stores a value, making tree, section and entry as needed, and marks
  /// the tree changed even when the value is the same. The entry may
  /// change type. Always CfgOk.
  unsigned long SetTextEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                             ZnString const &value);
  unsigned long SetIntegerEntry(ZnString const &section, ZnString const &entry, ZnString const &machine, int value);
  unsigned long SetFloatEntry(ZnString const &section, ZnString const &entry, ZnString const &machine, float value);
  unsigned long SetBinaryEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                               ZnBinary const &value);

  /// Replaces the whole tree by the file's content if the file was written
  /// strictly after the time last seen; false when there is nothing to
  /// read. A file with errors gives no tree, and its time is taken so that
  /// it is not read again. Changes not flushed are lost.
  bool Refresh();
  /// Writes the whole tree (an empty file for no tree) if it changed
  /// strictly after the file's write time, or if the file is missing;
  /// false when there is nothing to write. The file is replaced at once,
  /// never seen half written. Up to five tries; a file that cannot be
  /// written still gives true, and the next Flush tries again.
  bool Flush();
  /// Shifts five generations of copies, name.1 (newest) to name.5, and
  /// copies the file to name.1; failed copies are ignored.
  bool Backup();
  /// Drops the tree and marks it changed: the next Flush writes an empty
  /// file.
  void Clear();

  /// The path of the file, in a string of its own.
  ZnString FileName() const { return Path(); }

 private:
  void SetModified();
  /// A copy of the path that shares nothing with fsFileName, which other
  /// threads may be copying at the same time.
  ZnString Path() const { return ZnString(fsFileName.Chars()); }
  unsigned long LookupSectionAndEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                      ZnCfgSection **foundSection, ZnCfgEntryList **foundEntries,
                                      ZnCfgEntry **foundEntry);
  ZnCfgEntry *FindIndexedEntry(znutil::detail::CfgKey const &sectionKey, ZnString const &entry,
                               ZnString const &machine, ZnCfgData **data) const;
  unsigned long LookupData(ZnString const &section, ZnString const &entry, ZnString const &machine,
                           ZnCfgData **data);
  unsigned long LookupInTree(ZnString const &section, ZnString const &entry, ZnString const &machine,
                             ZnCfgSection **foundSection, ZnCfgEntryList **foundEntries, ZnCfgEntry **foundEntry);
  unsigned long CreateSectionAndEntry(ZnString const &section, ZnString const &entry, ZnString const &machine,
                                      ZnCfgSection **foundSection, ZnCfgEntryList **foundEntries,
                                      ZnCfgEntry **foundEntry);
  template <typename Value>
  unsigned long GetEntry(ZnString const &section, ZnString const &entry, ZnString const &machine, Value *result,
                         bool (ZnCfgData::*get)(Value *) const, bool (ZnCfgData::*convert)(Value *) const,
                         unsigned long notConverted);
  unsigned long SetEntry(ZnString const &section, ZnString const &entry, ZnString const &machine, ZnCfgData *data);
  ZnFileTime WriteText(ZnString const &text, ZnFileInformation *information);

  ZnString fsFileName;
  ZnFileTime ftFileTime;
  ZnFileTime ftModifiedTime;
  ZnCfgSectionList *plSections;
  /// The tree indexed by hash, for lookups; kept in step with plSections.
  znutil::detail::CfgEntryIndex *pIndex;
  ZnCriticalSection csFileLock;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGFILE_H
