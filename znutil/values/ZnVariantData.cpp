// The payloads of ZnVariant: the base defaults and the typed payloads.
#include <znutil/values/ZnVariantData.h>

#include <climits>
#include <type_traits>

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

// The other payload in a payload's own type: through its conversion, or
// its text for a string.
template <typename T>
T ConvertedTo(ZnVariantData const &other) {
  if constexpr (std::is_same_v<T, ZnString>) {
    return other.ToString();
  } else {
    return static_cast<T>(other);
  }
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

// Every typed payload.

template <class Derived, typename T, int kType>
ZnVariantData *ZnVdValue<Derived, T, kType>::MakeCopy() const {
  return new Derived(static_cast<Derived const &>(*this));
}

template <class Derived, typename T, int kType>
ZnVariantData *ZnVdValue<Derived, T, kType>::Assign(Param value) {
  tValue = value;
  return this;
}

template <class Derived, typename T, int kType>
int ZnVdValue<Derived, T, kType>::Compare(ZnVariantData const *other) const {
  return tValue == ConvertedTo<T>(*other);
}

// Numbers.

template <class Derived, typename T, int kType>
ZnVdNumber<Derived, T, kType>::operator bool() const {
  if constexpr (std::is_integral_v<T>) return this->tValue != 0;
  return ZnVariantData::operator bool();
}

template <class Derived, typename T, int kType>
ZnVdNumber<Derived, T, kType>::operator int() const {
  if constexpr (std::is_integral_v<T>) return static_cast<int>(this->tValue);
  return Truncated(this->tValue);
}

template <class Derived, typename T, int kType>
ZnVdNumber<Derived, T, kType>::operator unsigned int() const {
  if constexpr (std::is_integral_v<T>) return static_cast<unsigned int>(this->tValue);
  return static_cast<unsigned int>(Truncated(this->tValue));
}

template <class Derived, typename T, int kType>
ZnVdNumber<Derived, T, kType>::operator float() const {
  return static_cast<float>(this->tValue);
}

template <class Derived, typename T, int kType>
ZnVdNumber<Derived, T, kType>::operator double() const {
  return static_cast<double>(this->tValue);
}

template <class Derived, typename T, int kType>
ZnString ZnVdNumber<Derived, T, kType>::ToString() const {
  return ZnString(this->tValue);
}

template class ZnVdValue<ZnVdInt, int, ZnVariantData::kInt>;
template class ZnVdValue<ZnVdUint, unsigned int, ZnVariantData::kUnsigned>;
template class ZnVdValue<ZnVdFloat, float, ZnVariantData::kFloat>;
template class ZnVdValue<ZnVdDouble, double, ZnVariantData::kDouble>;
template class ZnVdValue<ZnVdBool, bool, ZnVariantData::kBool>;
template class ZnVdValue<ZnVdString, ZnString, ZnVariantData::kString>;
template class ZnVdNumber<ZnVdInt, int, ZnVariantData::kInt>;
template class ZnVdNumber<ZnVdUint, unsigned int, ZnVariantData::kUnsigned>;
template class ZnVdNumber<ZnVdFloat, float, ZnVariantData::kFloat>;
template class ZnVdNumber<ZnVdDouble, double, ZnVariantData::kDouble>;

// bool

ZnVdBool::operator bool() const { return tValue; }
ZnVdBool::operator int() const { return tValue ? 1 : 0; }
ZnVdBool::operator unsigned int() const { return tValue ? 1u : 0u; }

// string

ZnVdString::operator int() const { return static_cast<int>(tValue); }
ZnVdString::operator unsigned int() const { return static_cast<unsigned int>(tValue); }
ZnVdString::operator float() const { return static_cast<float>(tValue); }
ZnVdString::operator double() const { return static_cast<double>(tValue); }
ZnString ZnVdString::ToString() const { return tValue; }

}  // namespace variant_namespace
