#include <znutil/configuration/ZnCfgIntegerData.h>

ZnCfgIntegerData::ZnCfgIntegerData(int value) : ZnCfgData(CfgInteger), iValue(value) {}

bool ZnCfgIntegerData::GetInteger(int *value) const {
  *value = iValue;
  return true;
}

bool ZnCfgIntegerData::ConvertToInteger(int *value) const { return GetInteger(value); }

bool ZnCfgIntegerData::ConvertToFloat(float *value) const {
  *value = static_cast<float>(iValue);
  return true;
}

bool ZnCfgIntegerData::ConvertToText(ZnString *value) const {
  *value = iValue;
  return true;
}

bool ZnCfgIntegerData::ConvertToBinary(ZnBinary *value) const {
  value->Store(iValue);
  return true;
}

ZnString ZnCfgIntegerData::FormatValue() const { return ZnString(iValue); }

ZnString ZnCfgIntegerData::FormatType() const { return "(integer)"; }
