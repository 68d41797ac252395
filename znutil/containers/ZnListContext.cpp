#include <znutil/containers/ZnListContext.h>

ZnNullContext const NULL_CONTEXT;

ZnListContextData::~ZnListContextData() {}
