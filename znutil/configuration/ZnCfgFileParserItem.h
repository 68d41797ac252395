// ZnCfgFileParserItem: the base of everything the configuration parser
// builds, so that a failed parse leaves nothing behind.
//
//   ZnCfgData *data = new ZnCfgIntegerData(80);   // tracked by the parse
//   ZnCfgEntry *entry = new ZnCfgEntry("Port", "all", data);  // adopts data:
//                                                  // data->Release()
//
// An object built with tracking on is listed on the tracking list of the
// parse running on the constructing thread (plParserItems), until a parent
// adopts it and calls Release. Whatever is still listed when the parse ends
// is destroyed in one sweep. With no parse running on the thread nothing is
// listed and Release returns false, so objects built for other purposes may
// pass either flag.
#ifndef ZNUTIL_CONFIGURATION_ZNCFGFILEPARSERITEM_H
#define ZNUTIL_CONFIGURATION_ZNCFGFILEPARSERITEM_H

#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>

class ZNUTIL_API ZnCfgFileParserItem {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  /// Lists the object on the current parse's tracking list when `tracked`.
  explicit ZnCfgFileParserItem(bool tracked);
  ZnCfgFileParserItem(ZnCfgFileParserItem const &) = delete;
  ZnCfgFileParserItem &operator=(ZnCfgFileParserItem const &) = delete;
  /// Takes the object off the tracking list if it is still there, so that
  /// the sweep never meets a destroyed object.
  virtual ~ZnCfgFileParserItem();

  /// Takes this object off the tracking list without destroying it; true if
  /// it was there.
  virtual bool Release();
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGFILEPARSERITEM_H
