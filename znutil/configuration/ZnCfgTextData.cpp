#include <znutil/configuration/ZnCfgTextData.h>

ZnCfgTextData::ZnCfgTextData(ZnString const &value) : ZnCfgData(CfgText), fsValue(value) {}

bool ZnCfgTextData::GetText(ZnString *value) const {
  *value = fsValue;
  return true;
}

bool ZnCfgTextData::ConvertToInteger(int *value) const {
  *value = fsValue;
  return true;
}

bool ZnCfgTextData::ConvertToFloat(float *value) const {
  *value = fsValue;
  return true;
}

bool ZnCfgTextData::ConvertToText(ZnString *value) const { return GetText(value); }

bool ZnCfgTextData::ConvertToBinary(ZnBinary *value) const {
  value->Store(fsValue);
  return true;
}

ZnString ZnCfgTextData::FormatValue() const {
  ZnString text("\"");
  text << fsValue.ToCString() << '"';
  return text;
}

ZnString ZnCfgTextData::FormatType() const { return "(text)"; }
