// variant_namespace::ZnVdBool: the payload of a variant that holds a bool.
//
// It is 1 or 0 as an integer, but keeps the base's 0.0 as a float or double
// and the base's empty text: deliberate.
#ifndef ZNUTIL_VALUES_ZNVDBOOL_H
#define ZNUTIL_VALUES_ZNVDBOOL_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVdValue.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdBool : public ZnVdValue<ZnVdBool, bool, ZnVariantData::kBool> {
 public:
  explicit ZnVdBool(bool value) : ZnVdValue(value) {}

  operator bool() const override;
  operator int() const override;
  operator unsigned int() const override;
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDBOOL_H
