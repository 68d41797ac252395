// variant_namespace::ZnVdUint: the payload of a variant that holds an unsigned int.
#ifndef ZNUTIL_VALUES_ZNVDUINT_H
#define ZNUTIL_VALUES_ZNVDUINT_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVariantData.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdUint : public ZnVariantData {
 public:
  explicit ZnVdUint(unsigned int value) : ZnVariantData(kUnsigned), uValue(value) {}

  using ZnVariantData::Assign;

  ZnVariantData *MakeCopy() const override;
  /// Stores in place and returns this payload.
  ZnVariantData *Assign(unsigned int value) override;
  /// The value is not 0.
  operator bool() const override;
  /// The same bits.
  operator int() const override;
  operator unsigned int() const override;
  operator float() const override;
  operator double() const override;
  /// "%u".
  ZnString ToString() const override;
  /// 1 when the value equals the other's unsigned int conversion.
  int Compare(ZnVariantData const *other) const override;

 private:
  unsigned int uValue;
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDUINT_H
