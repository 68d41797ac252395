// ZnVariant: one value of a type chosen at run time: nothing, a bool, an
// int, an unsigned int, a float, a double or a string.
//
//   ZnVariant width(640);
//   double w = width;                  // 640.0
//   width = ZnString("wide");          // now a string: the type follows
//   if (width.IsString()) ...
//
// The variant owns a payload (variant_namespace) that converts itself and
// compares. Assigning a value of the type held changes it in place; another
// type replaces the payload. Comparison first asks IsLike: a bool is like
// only a bool, an integer of either signedness like an integer, a float or
// double like a float or double, a string like a string. So
// ZnVariant(1) == ZnVariant(1.0) is false, ZnVariant(-1) equals
// ZnVariant(0xFFFFFFFFu), and a variant holding nothing equals nothing, not
// even itself. All deliberate. Copies are deep.
#ifndef ZNUTIL_VALUES_ZNVARIANT_H
#define ZNUTIL_VALUES_ZNVARIANT_H

#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

namespace variant_namespace {
class ZnVariantData;
}  // namespace variant_namespace

class ZNUTIL_API ZnVariant {
 public:
  /// Holds nothing: type 0.
  ZnVariant();
  ZnVariant(bool value);
  ZnVariant(int value);
  ZnVariant(unsigned int value);
  ZnVariant(float value);
  ZnVariant(double value);
  ZnVariant(ZnString const &value);
  /// A copy of the other's payload.
  ZnVariant(ZnVariant const &other);
  /// Deletes the payload and leaves 0xDEADBEEF in its place, so that use
  /// after destruction stands out.
  virtual ~ZnVariant();

  ZnVariant &operator=(bool value);
  ZnVariant &operator=(int value);
  ZnVariant &operator=(unsigned int value);
  ZnVariant &operator=(float value);
  ZnVariant &operator=(double value);
  ZnVariant &operator=(ZnString const &value);
  /// Copies first, then replaces: assigning a variant to itself keeps it.
  ZnVariant &operator=(ZnVariant const &other);

  /// 0 unless IsLike; then the left payload's comparison with the right.
  int operator==(ZnVariant const &other) const;
  int operator!=(ZnVariant const &other) const;

  /// The payload's conversions: a float, double or string is false as
  /// bool, and a bool is 0.0 as a float or double. Deliberate.
  operator bool() const;
  operator int() const;
  operator unsigned int() const;
  operator float() const;
  operator double() const;
  /// Empty for nothing and for a bool. Deliberate.
  ZnString ToString() const;

  /// 0 nothing, 1 bool, 2 int, 3 unsigned int, 4 float, 5 double, 6 string.
  int Type() const;
  bool IsBool() const;
  /// int or unsigned int.
  bool IsInt() const;
  /// float or double.
  bool IsFloat() const;
  /// int, unsigned int, float or double.
  bool IsNumber() const;
  bool IsString() const;
  /// Both bool, both integers, both floating, or the same type.
  bool IsLike(ZnVariant const &other) const;

 private:
  template <typename T>
  ZnVariant &AssignValue(T const &value);

  variant_namespace::ZnVariantData *pvdData;
};

#endif  // ZNUTIL_VALUES_ZNVARIANT_H
