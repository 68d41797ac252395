// variant_namespace::ZnVdUint: the payload of a variant that holds an unsigned int.
#ifndef ZNUTIL_VALUES_ZNVDUINT_H
#define ZNUTIL_VALUES_ZNVDUINT_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVdNumber.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdUint : public ZnVdNumber<ZnVdUint, unsigned int, ZnVariantData::kUnsigned> {
 public:
  explicit ZnVdUint(unsigned int value) : ZnVdNumber(value) {}
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDUINT_H
