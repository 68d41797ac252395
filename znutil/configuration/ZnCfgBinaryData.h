// ZnCfgBinaryData: a binary value. It reads only as binary: every other
// read fails, deliberately.
//
//   ZnCfgBinaryData data(ZnBinary(ZnString("ab")));
//   data.FormatValue();   // "x61,x62", 19 bytes to a line
#ifndef ZNUTIL_CONFIGURATION_ZNCFGBINARYDATA_H
#define ZNUTIL_CONFIGURATION_ZNCFGBINARYDATA_H

#include <znutil/configuration/ZnCfgData.h>

class ZNUTIL_API ZnCfgBinaryData : public ZnCfgData {
 public:
  explicit ZnCfgBinaryData(ZnBinary const &value);

  bool GetBinary(ZnBinary *value) const override;
  bool ConvertToBinary(ZnBinary *value) const override;
  /// ZnBinary::Dump with line breaks; empty for an empty value.
  ZnString FormatValue() const override;
  ZnString FormatType() const override;

 private:
  ZnBinary bValue;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGBINARYDATA_H
