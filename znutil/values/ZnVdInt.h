// variant_namespace::ZnVdInt: the payload of a variant that holds an int.
#ifndef ZNUTIL_VALUES_ZNVDINT_H
#define ZNUTIL_VALUES_ZNVDINT_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVariantData.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdInt : public ZnVariantData {
 public:
  explicit ZnVdInt(int value) : ZnVariantData(kInt), iValue(value) {}

  using ZnVariantData::Assign;

  ZnVariantData *MakeCopy() const override;
  /// Stores in place and returns this payload.
  ZnVariantData *Assign(int value) override;
  /// The value is not 0.
  operator bool() const override;
  operator int() const override;
  /// The same bits.
  operator unsigned int() const override;
  operator float() const override;
  operator double() const override;
  /// "%d".
  ZnString ToString() const override;
  /// 1 when the value equals the other's int conversion.
  int Compare(ZnVariantData const *other) const override;

 private:
  int iValue;
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDINT_H
