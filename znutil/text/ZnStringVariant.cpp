// The bridge from variants to strings.
#include <znutil/text/ZnString.h>

#include <znutil/values/ZnVariant.h>

ZnString::ZnString(ZnVariant const &value) : ZnString(value.ToString()) {}
