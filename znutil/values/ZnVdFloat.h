// variant_namespace::ZnVdFloat: the payload of a variant that holds a float.
#ifndef ZNUTIL_VALUES_ZNVDFLOAT_H
#define ZNUTIL_VALUES_ZNVDFLOAT_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVariantData.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdFloat : public ZnVariantData {
 public:
  explicit ZnVdFloat(float value) : ZnVariantData(kFloat), fValue(value) {}

  using ZnVariantData::Assign;

  ZnVariantData *MakeCopy() const override;
  /// Stores in place and returns this payload.
  ZnVariantData *Assign(float value) override;
  // As bool it stays false, as in the base. Deliberate.
  /// Truncated toward zero; INT_MIN when out of range or not a number.
  operator int() const override;
  /// Truncated toward zero as a signed value, then the same bits.
  operator unsigned int() const override;
  operator float() const override;
  operator double() const override;
  /// "%f".
  ZnString ToString() const override;
  /// 1 when the value equals the other's float conversion.
  int Compare(ZnVariantData const *other) const override;

 private:
  float fValue;
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDFLOAT_H
