#include <znutil/configuration/ZnCfgData.h>

ZnCfgData::ZnCfgData(int dataType) : ZnCfgFileParserItem(true), iDataType(dataType) {}

ZnCfgData::~ZnCfgData() = default;

bool ZnCfgData::GetInteger(int *) const { return false; }

bool ZnCfgData::GetFloat(float *) const { return false; }

bool ZnCfgData::GetText(ZnString *) const { return false; }

bool ZnCfgData::GetBinary(ZnBinary *) const { return false; }

bool ZnCfgData::ConvertToInteger(int *) const { return false; }

bool ZnCfgData::ConvertToFloat(float *) const { return false; }

bool ZnCfgData::ConvertToText(ZnString *) const { return false; }

bool ZnCfgData::ConvertToBinary(ZnBinary *) const { return false; }
