// ZnCfgIntegerData: a signed 32-bit value. It converts to a float, to its
// decimal text and to its 4 bytes.
//
//   ZnCfgIntegerData data(1024);
//   data.FormatValue();   // "1024"
#ifndef ZNUTIL_CONFIGURATION_ZNCFGINTEGERDATA_H
#define ZNUTIL_CONFIGURATION_ZNCFGINTEGERDATA_H

#include <znutil/configuration/ZnCfgData.h>

class ZNUTIL_API ZnCfgIntegerData : public ZnCfgData {
 public:
  explicit ZnCfgIntegerData(int value);

  bool GetInteger(int *value) const override;
  bool ConvertToInteger(int *value) const override;
  bool ConvertToFloat(float *value) const override;
  bool ConvertToText(ZnString *value) const override;
  bool ConvertToBinary(ZnBinary *value) const override;
  /// The decimal form.
  ZnString FormatValue() const override;
  ZnString FormatType() const override;

 private:
  int iValue;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGINTEGERDATA_H
