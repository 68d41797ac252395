// variant_namespace::ZnVdString: the payload of a variant that holds a
// string.
//
// Its numbers are those of the text: atoi for int, ZnString's conversions
// for the others. It keeps the base's false as bool, whatever the text:
// deliberate. It compares with the other payload's text.
#ifndef ZNUTIL_VALUES_ZNVDSTRING_H
#define ZNUTIL_VALUES_ZNVDSTRING_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVdValue.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdString : public ZnVdValue<ZnVdString, ZnString, ZnVariantData::kString> {
 public:
  explicit ZnVdString(ZnString const &value) : ZnVdValue(value) {}

  operator int() const override;
  operator unsigned int() const override;
  operator float() const override;
  operator double() const override;
  /// A copy of the text.
  ZnString ToString() const override;
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDSTRING_H
