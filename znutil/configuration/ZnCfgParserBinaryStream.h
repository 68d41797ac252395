// ZnCfgParserBinaryStream: a ZnBinaryStream that the parser tracks, in
// which the grammar gathers the bytes of a byte list.
#ifndef ZNUTIL_CONFIGURATION_ZNCFGPARSERBINARYSTREAM_H
#define ZNUTIL_CONFIGURATION_ZNCFGPARSERBINARYSTREAM_H

#include <znutil/configuration/ZnCfgFileParserItem.h>
#include <znutil/platform/Export.h>
#include <znutil/values/ZnBinaryStream.h>

class ZNUTIL_API ZnCfgParserBinaryStream : public ZnBinaryStream, public ZnCfgFileParserItem {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  /// Empty and tracked.
  ZnCfgParserBinaryStream();
  ~ZnCfgParserBinaryStream() override;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGPARSERBINARYSTREAM_H
