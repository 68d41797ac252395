// ZnCfgData: the typed value of a configuration entry.
//
//   ZnCfgData *data = new ZnCfgTextData("640");
//   int width;
//   data->GetInteger(&width);        // false: the value is text
//   data->ConvertToInteger(&width);  // true, 640
//
// Each subclass holds one value: ZnCfgTextData, ZnCfgBinaryData,
// ZnCfgIntegerData, ZnCfgFloatData. A Get... read succeeds only for the
// value's own type; a ConvertTo... read converts where a conversion exists.
// Text always converts ("abc" reads as the integer 0); binary converts to
// nothing else, deliberately; a float becomes an integer by truncation
// toward zero. Here every read fails. FormatValue and FormatType give the
// value and its tag as a configuration file writes them.
#ifndef ZNUTIL_CONFIGURATION_ZNCFGDATA_H
#define ZNUTIL_CONFIGURATION_ZNCFGDATA_H

#include <znutil/configuration/ZnCfgFileParserItem.h>
#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>
#include <znutil/values/ZnBinary.h>

class ZNUTIL_API ZnCfgData : public ZnCfgFileParserItem {
 public:
  /// The values of iDataType.
  enum DataType { CfgText = 1, CfgBinary = 2, CfgInteger = 3, CfgFloat = 4 };

  ~ZnCfgData() override;

  virtual bool GetInteger(int *value) const;
  virtual bool GetFloat(float *value) const;
  virtual bool GetText(ZnString *value) const;
  virtual bool GetBinary(ZnBinary *value) const;
  virtual bool ConvertToInteger(int *value) const;
  virtual bool ConvertToFloat(float *value) const;
  virtual bool ConvertToText(ZnString *value) const;
  virtual bool ConvertToBinary(ZnBinary *value) const;
  /// The value as the file form writes it.
  virtual ZnString FormatValue() const = 0;
  /// The type tag: "(text)", "(binary)", "(integer)" or "(float)".
  virtual ZnString FormatType() const = 0;

  /// One of DataType.
  int DataType() const { return iDataType; }

 protected:
  /// Tracked, as every value is.
  explicit ZnCfgData(int dataType);

 private:
  int iDataType;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGDATA_H
