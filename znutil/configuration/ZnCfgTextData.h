// ZnCfgTextData: a text value. It converts to every type: to an integer by
// atoi, to a float as ZnString reads one, to binary as its characters.
//
//   ZnCfgTextData data("abc");
//   int n;
//   data.ConvertToInteger(&n);   // true, 0
//   data.FormatValue();          // "\"abc\"", escaped as a C string
#ifndef ZNUTIL_CONFIGURATION_ZNCFGTEXTDATA_H
#define ZNUTIL_CONFIGURATION_ZNCFGTEXTDATA_H

#include <znutil/configuration/ZnCfgData.h>

class ZNUTIL_API ZnCfgTextData : public ZnCfgData {
 public:
  explicit ZnCfgTextData(ZnString const &value);

  bool GetText(ZnString *value) const override;
  bool ConvertToInteger(int *value) const override;
  bool ConvertToFloat(float *value) const override;
  bool ConvertToText(ZnString *value) const override;
  bool ConvertToBinary(ZnBinary *value) const override;
  /// The value through ZnString::ToCString, between double quotes.
  ZnString FormatValue() const override;
  ZnString FormatType() const override;

 private:
  ZnString fsValue;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGTEXTDATA_H
