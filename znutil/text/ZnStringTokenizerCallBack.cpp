#include <znutil/text/ZnStringTokenizerCallBack.h>

bool ZnStringTokenizerCallBack::StringTokenizerCallBack(ZnString const &, ZnString &) { return true; }
