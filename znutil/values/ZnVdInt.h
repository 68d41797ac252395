// variant_namespace::ZnVdInt: the payload of a variant that holds an int.
#ifndef ZNUTIL_VALUES_ZNVDINT_H
#define ZNUTIL_VALUES_ZNVDINT_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVdNumber.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdInt : public ZnVdNumber<ZnVdInt, int, ZnVariantData::kInt> {
 public:
  explicit ZnVdInt(int value) : ZnVdNumber(value) {}
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDINT_H
