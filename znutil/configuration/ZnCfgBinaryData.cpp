#include <znutil/configuration/ZnCfgBinaryData.h>

ZnCfgBinaryData::ZnCfgBinaryData(ZnBinary const &value) : ZnCfgData(CfgBinary), bValue(value) {}

bool ZnCfgBinaryData::GetBinary(ZnBinary *value) const {
  *value = bValue;
  return true;
}

bool ZnCfgBinaryData::ConvertToBinary(ZnBinary *value) const { return GetBinary(value); }

ZnString ZnCfgBinaryData::FormatValue() const { return ZnBinary(bValue).Dump(true); }

ZnString ZnCfgBinaryData::FormatType() const { return "(binary)"; }
