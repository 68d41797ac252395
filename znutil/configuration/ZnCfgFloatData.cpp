#include <znutil/configuration/ZnCfgFloatData.h>

#include <climits>

ZnCfgFloatData::ZnCfgFloatData(float value) : ZnCfgData(CfgFloat), fValue(value) {}

bool ZnCfgFloatData::GetFloat(float *value) const {
  *value = fValue;
  return true;
}

bool ZnCfgFloatData::ConvertToInteger(int *value) const {
  // The bounds are exact floats: -2^31 and 2^31.
  bool const fits = fValue >= static_cast<float>(INT_MIN) && fValue < -static_cast<float>(INT_MIN);
  *value = fits ? static_cast<int>(fValue) : INT_MIN;
  return true;
}

bool ZnCfgFloatData::ConvertToFloat(float *value) const { return GetFloat(value); }

bool ZnCfgFloatData::ConvertToText(ZnString *value) const {
  *value = fValue;
  return true;
}

bool ZnCfgFloatData::ConvertToBinary(ZnBinary *value) const {
  value->Store(fValue);
  return true;
}

ZnString ZnCfgFloatData::FormatValue() const { return ZnBinary(fValue).Dump(false); }

ZnString ZnCfgFloatData::FormatType() const { return "(float)"; }
