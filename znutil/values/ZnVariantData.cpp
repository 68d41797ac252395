// The payloads of ZnVariant: the base defaults and the six typed payloads.
#include <znutil/values/ZnVariantData.h>

#include <climits>

#include <znutil/values/ZnVdBool.h>
#include <znutil/values/ZnVdDouble.h>
#include <znutil/values/ZnVdFloat.h>
#include <znutil/values/ZnVdInt.h>
#include <znutil/values/ZnVdString.h>
#include <znutil/values/ZnVdUint.h>

namespace variant_namespace {
namespace {

// Truncation toward zero as the processor does it: a value out of range,
// or not a number, gives INT_MIN instead of undefined behaviour.
int Truncated(double value) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) return INT_MIN;
  return static_cast<int>(value);
}

}  // namespace

// The base: a new payload for every type, and the defaults.

ZnVariantData::~ZnVariantData() {}
ZnVariantData *ZnVariantData::MakeCopy() const { return new ZnVariantData(*this); }
ZnVariantData *ZnVariantData::Assign(ZnString const &value) { return new ZnVdString(value); }
ZnVariantData *ZnVariantData::Assign(double value) { return new ZnVdDouble(value); }
ZnVariantData *ZnVariantData::Assign(float value) { return new ZnVdFloat(value); }
ZnVariantData *ZnVariantData::Assign(unsigned int value) { return new ZnVdUint(value); }
ZnVariantData *ZnVariantData::Assign(int value) { return new ZnVdInt(value); }
ZnVariantData *ZnVariantData::Assign(bool value) { return new ZnVdBool(value); }
ZnVariantData::operator bool() const { return false; }
ZnVariantData::operator int() const { return 0; }
ZnVariantData::operator unsigned int() const { return 0; }
ZnVariantData::operator float() const { return 0.0f; }
ZnVariantData::operator double() const { return 0.0; }
ZnString ZnVariantData::ToString() const { return ZnString(); }
int ZnVariantData::Compare(ZnVariantData const *) const { return 0; }

// bool

ZnVariantData *ZnVdBool::MakeCopy() const { return new ZnVdBool(*this); }
ZnVariantData *ZnVdBool::Assign(bool value) {
  bValue = value;
  return this;
}
ZnVdBool::operator bool() const { return bValue; }
ZnVdBool::operator int() const { return bValue ? 1 : 0; }
ZnVdBool::operator unsigned int() const { return bValue ? 1u : 0u; }
int ZnVdBool::Compare(ZnVariantData const *other) const { return bValue == static_cast<bool>(*other); }

// int

ZnVariantData *ZnVdInt::MakeCopy() const { return new ZnVdInt(*this); }
ZnVariantData *ZnVdInt::Assign(int value) {
  iValue = value;
  return this;
}
ZnVdInt::operator bool() const { return iValue != 0; }
ZnVdInt::operator int() const { return iValue; }
ZnVdInt::operator unsigned int() const { return static_cast<unsigned int>(iValue); }
ZnVdInt::operator float() const { return static_cast<float>(iValue); }
ZnVdInt::operator double() const { return iValue; }
ZnString ZnVdInt::ToString() const { return ZnString(iValue); }
int ZnVdInt::Compare(ZnVariantData const *other) const { return iValue == static_cast<int>(*other); }

// unsigned int

ZnVariantData *ZnVdUint::MakeCopy() const { return new ZnVdUint(*this); }
ZnVariantData *ZnVdUint::Assign(unsigned int value) {
  uValue = value;
  return this;
}
ZnVdUint::operator bool() const { return uValue != 0; }
ZnVdUint::operator int() const { return static_cast<int>(uValue); }
ZnVdUint::operator unsigned int() const { return uValue; }
ZnVdUint::operator float() const { return static_cast<float>(uValue); }
ZnVdUint::operator double() const { return uValue; }
ZnString ZnVdUint::ToString() const { return ZnString(uValue); }
int ZnVdUint::Compare(ZnVariantData const *other) const { return uValue == static_cast<unsigned int>(*other); }

// float

ZnVariantData *ZnVdFloat::MakeCopy() const { return new ZnVdFloat(*this); }
ZnVariantData *ZnVdFloat::Assign(float value) {
  fValue = value;
  return this;
}
ZnVdFloat::operator int() const { return Truncated(fValue); }
ZnVdFloat::operator unsigned int() const { return static_cast<unsigned int>(Truncated(fValue)); }
ZnVdFloat::operator float() const { return fValue; }
ZnVdFloat::operator double() const { return fValue; }
ZnString ZnVdFloat::ToString() const { return ZnString(fValue); }
int ZnVdFloat::Compare(ZnVariantData const *other) const { return fValue == static_cast<float>(*other); }

// double

ZnVariantData *ZnVdDouble::MakeCopy() const { return new ZnVdDouble(*this); }
ZnVariantData *ZnVdDouble::Assign(double value) {
  dValue = value;
  return this;
}
ZnVdDouble::operator int() const { return Truncated(dValue); }
ZnVdDouble::operator unsigned int() const { return static_cast<unsigned int>(Truncated(dValue)); }
ZnVdDouble::operator float() const { return static_cast<float>(dValue); }
ZnVdDouble::operator double() const { return dValue; }
ZnString ZnVdDouble::ToString() const { return ZnString(dValue); }
int ZnVdDouble::Compare(ZnVariantData const *other) const { return dValue == static_cast<double>(*other); }

// string

ZnVariantData *ZnVdString::MakeCopy() const { return new ZnVdString(*this); }
ZnVariantData *ZnVdString::Assign(ZnString const &value) {
  fsValue = value;
  return this;
}
ZnVdString::operator int() const { return static_cast<int>(fsValue); }
ZnVdString::operator unsigned int() const { return static_cast<unsigned int>(fsValue); }
ZnVdString::operator float() const { return static_cast<float>(fsValue); }
ZnVdString::operator double() const { return static_cast<double>(fsValue); }
ZnString ZnVdString::ToString() const { return fsValue; }
int ZnVdString::Compare(ZnVariantData const *other) const { return fsValue == other->ToString(); }

}  // namespace variant_namespace
