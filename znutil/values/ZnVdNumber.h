// variant_namespace::ZnVdNumber: the payloads of the four number types,
// with the conversions of the variant's matrix.
//
// An integer is true when it is not 0; a float or double stays false as
// bool, as in the base: deliberate. Integers convert to each other by their
// bits; a float or double is truncated toward zero as a signed value (and
// then taken by its bits as unsigned), with INT_MIN for a value outside the
// int range or not a number. The text is that of ZnString's constructor
// from the type.
#ifndef ZNUTIL_VALUES_ZNVDNUMBER_H
#define ZNUTIL_VALUES_ZNVDNUMBER_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnVdValue.h>

namespace variant_namespace {

template <class Derived, typename T, int kType>
class ZNUTIL_API ZnVdNumber : public ZnVdValue<Derived, T, kType> {
 public:
  operator bool() const override;
  operator int() const override;
  operator unsigned int() const override;
  operator float() const override;
  operator double() const override;
  ZnString ToString() const override;

 protected:
  explicit ZnVdNumber(T value) : ZnVdValue<Derived, T, kType>(value) {}
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVDNUMBER_H
