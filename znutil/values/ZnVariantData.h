// variant_namespace::ZnVariantData: the payload of a ZnVariant, and the
// payload of a variant that holds nothing.
//
// Each payload class knows how to convert itself and how to compare with
// another payload. The base gives the defaults: false, 0, 0.0 and empty,
// and it compares equal to nothing. A payload class overrides only some
// slots, and the gaps are deliberate: a float, a double and a string are
// all false as bool; a bool is 0.0 as a float or double and empty as text.
//
// Each Assign returns the payload that holds the new value: the object
// itself when it already holds that type, else a new payload of the type,
// which the caller then owns.
#ifndef ZNUTIL_VALUES_ZNVARIANTDATA_H
#define ZNUTIL_VALUES_ZNVARIANTDATA_H

#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

namespace variant_namespace {

class ZNUTIL_API ZnVariantData {
 public:
  /// The type codes: 0 nothing, 1 bool, 2 int, 3 unsigned int, 4 float,
  /// 5 double, 6 string.
  enum { kNothing = 0, kBool = 1, kInt = 2, kUnsigned = 3, kFloat = 4, kDouble = 5, kString = 6 };

  explicit ZnVariantData(int type = kNothing) : iType(type) {}
  ZnVariantData(ZnVariantData const &other) = default;
  /// Copies the type code.
  ZnVariantData &operator=(ZnVariantData const &other) = default;

  virtual ~ZnVariantData();
  /// A new payload of the same class and value.
  virtual ZnVariantData *MakeCopy() const;
  virtual ZnVariantData *Assign(ZnString const &value);
  virtual ZnVariantData *Assign(double value);
  virtual ZnVariantData *Assign(float value);
  virtual ZnVariantData *Assign(unsigned int value);
  virtual ZnVariantData *Assign(int value);
  virtual ZnVariantData *Assign(bool value);
  virtual operator bool() const;
  virtual operator int() const;
  virtual operator unsigned int() const;
  virtual operator float() const;
  virtual operator double() const;
  virtual ZnString ToString() const;
  /// 1 when this payload's value equals the other converted to this
  /// payload's type, else 0. Nothing equals nothing, not even itself.
  virtual int Compare(ZnVariantData const *other) const;

  int Type() const { return iType; }

 private:
  int iType;
};

}  // namespace variant_namespace

#endif  // ZNUTIL_VALUES_ZNVARIANTDATA_H
