// variant_namespace::ZnVdBool: the payload of a variant that holds a bool.
#ifndef ZNUTIL_VALUES_ZNVDBOOL_H
#define ZNUTIL_VALUES_ZNVDBOOL_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVariantData.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdBool : public ZnVariantData {
 public:
  explicit ZnVdBool(bool value) : ZnVariantData(kBool), bValue(value) {}

  using ZnVariantData::Assign;

  ZnVariantData *MakeCopy() const override;
  /// Stores in place and returns this payload.
  ZnVariantData *Assign(bool value) override;
  operator bool() const override;
  /// 1 or 0.
  operator int() const override;
  operator unsigned int() const override;
  // Float, double and text stay as in the base: 0.0 and empty. Deliberate.
  /// 1 when the value equals the other's bool conversion.
  int Compare(ZnVariantData const *other) const override;

 private:
  bool bValue;
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDBOOL_H
