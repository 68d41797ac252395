#include <znutil/configuration/ZnCfgParserBinaryStream.h>

ZnCfgParserBinaryStream::ZnCfgParserBinaryStream() : ZnCfgFileParserItem(true) {}

ZnCfgParserBinaryStream::~ZnCfgParserBinaryStream() = default;
