// variant_namespace::ZnVdString: the payload of a variant that holds a string.
#ifndef ZNUTIL_VALUES_ZNVDSTRING_H
#define ZNUTIL_VALUES_ZNVDSTRING_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVariantData.h>

namespace variant_namespace {

class ZNUTIL_API ZnVdString : public ZnVariantData {
 public:
  explicit ZnVdString(ZnString const &value) : ZnVariantData(kString), fsValue(value) {}

  using ZnVariantData::Assign;

  ZnVariantData *MakeCopy() const override;
  /// Stores in place and returns this payload.
  ZnVariantData *Assign(ZnString const &value) override;
  // As bool it stays false, as in the base, whatever the text. Deliberate.
  /// atoi of the text.
  operator int() const override;
  /// The ZnString conversions of the text.
  operator unsigned int() const override;
  operator float() const override;
  operator double() const override;
  /// A copy of the text.
  ZnString ToString() const override;
  /// 1 when the value equals the other's text, by ZnString ==.
  int Compare(ZnVariantData const *other) const override;

 private:
  ZnString fsValue;
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDSTRING_H
