// ZnCfgFloatData: a 32-bit float value. It converts to an integer by
// truncation toward zero, to text as "%f" and to its 4 bytes; it is written
// as those 4 bytes, so it reads back exactly.
//
//   ZnCfgFloatData data(1.0f);
//   data.FormatValue();   // "x00,x00,x80,x3f"
#ifndef ZNUTIL_CONFIGURATION_ZNCFGFLOATDATA_H
#define ZNUTIL_CONFIGURATION_ZNCFGFLOATDATA_H

#include <znutil/configuration/ZnCfgData.h>

class ZNUTIL_API ZnCfgFloatData : public ZnCfgData {
 public:
  explicit ZnCfgFloatData(float value);

  bool GetFloat(float *value) const override;
  /// Truncated toward zero; a value outside the int range, or not a number,
  /// gives INT_MIN, as the processor's conversion does.
  bool ConvertToInteger(int *value) const override;
  bool ConvertToFloat(float *value) const override;
  bool ConvertToText(ZnString *value) const override;
  bool ConvertToBinary(ZnBinary *value) const override;
  /// The 4 bytes of ZnBinary(float) on one line.
  ZnString FormatValue() const override;
  ZnString FormatType() const override;

 private:
  float fValue;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGFLOATDATA_H
