// variant_namespace::ZnVdValue: what every typed payload of a ZnVariant
// shares: one value field, a copy of its own class, an in-place Assign of
// its own type, and comparison with the other payload converted to that
// type (its text, for a string).
//
//   class ZnVdBool : public ZnVdValue<ZnVdBool, bool, ZnVariantData::kBool> {...};
//
// The other Assign overloads stay as in the base and return a new payload.
#ifndef ZNUTIL_VALUES_ZNVDVALUE_H
#define ZNUTIL_VALUES_ZNVDVALUE_H

#include <type_traits>

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVariantData.h>

namespace variant_namespace {

template <class Derived, typename T, int kType>
class ZNUTIL_API ZnVdValue : public ZnVariantData {
 public:
  /// How Assign takes a T: by value, or by const reference for a string.
  using Param = std::conditional_t<std::is_scalar_v<T>, T, T const &>;

  using ZnVariantData::Assign;

  ZnVariantData *MakeCopy() const override;
  /// Stores in place and returns this payload.
  ZnVariantData *Assign(Param value) override;
  /// 1 when the value equals the other payload converted to T.
  int Compare(ZnVariantData const *other) const override;

 protected:
  explicit ZnVdValue(Param value) : ZnVariantData(kType), tValue(value) {}

  T tValue;
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDVALUE_H
