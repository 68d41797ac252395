// variant_namespace::ZnVdFloat: the payload of a variant that holds a float.
#ifndef ZNUTIL_VALUES_ZNVDFLOAT_H
#define ZNUTIL_VALUES_ZNVDFLOAT_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVdNumber.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdFloat : public ZnVdNumber<ZnVdFloat, float, ZnVariantData::kFloat> {
 public:
  explicit ZnVdFloat(float value) : ZnVdNumber(value) {}
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDFLOAT_H
