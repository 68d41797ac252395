// variant_namespace::ZnVdDouble: the payload of a variant that holds a double.
#ifndef ZNUTIL_VALUES_ZNVDDOUBLE_H
#define ZNUTIL_VALUES_ZNVDDOUBLE_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVdNumber.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdDouble : public ZnVdNumber<ZnVdDouble, double, ZnVariantData::kDouble> {
 public:
  explicit ZnVdDouble(double value) : ZnVdNumber(value) {}
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDDOUBLE_H
