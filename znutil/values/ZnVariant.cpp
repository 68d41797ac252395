#include <znutil/values/ZnVariant.h>

#include <cstdint>

#include <znutil/values/ZnVariantData.h>

using variant_namespace::ZnVariantData;

ZnVariant::ZnVariant() : pvdData(new ZnVariantData) {}
ZnVariant::ZnVariant(bool value) : ZnVariant() { AssignValue(value); }
ZnVariant::ZnVariant(int value) : ZnVariant() { AssignValue(value); }
ZnVariant::ZnVariant(unsigned int value) : ZnVariant() { AssignValue(value); }
ZnVariant::ZnVariant(float value) : ZnVariant() { AssignValue(value); }
ZnVariant::ZnVariant(double value) : ZnVariant() { AssignValue(value); }
ZnVariant::ZnVariant(ZnString const &value) : ZnVariant() { AssignValue(value); }
ZnVariant::ZnVariant(ZnVariant const &other) : pvdData(other.pvdData->MakeCopy()) {}

ZnVariant::~ZnVariant() {
  delete pvdData;
  // A use after destruction must meet this mark, not the freed payload. The
  // store is volatile because a plain store into an object whose lifetime is
  // ending is removed by the optimiser.
  *static_cast<ZnVariantData *volatile *>(&pvdData) = reinterpret_cast<ZnVariantData *>(std::uintptr_t{0xDEADBEEF});
}

template <typename T>
ZnVariant &ZnVariant::AssignValue(T const &value) {
  ZnVariantData *const result = pvdData->Assign(value);
  if (result != pvdData) {
    delete pvdData;
    pvdData = result;
  }
  return *this;
}

ZnVariant &ZnVariant::operator=(bool value) { return AssignValue(value); }
ZnVariant &ZnVariant::operator=(int value) { return AssignValue(value); }
ZnVariant &ZnVariant::operator=(unsigned int value) { return AssignValue(value); }
ZnVariant &ZnVariant::operator=(float value) { return AssignValue(value); }
ZnVariant &ZnVariant::operator=(double value) { return AssignValue(value); }
ZnVariant &ZnVariant::operator=(ZnString const &value) { return AssignValue(value); }

ZnVariant &ZnVariant::operator=(ZnVariant const &other) {
  ZnVariantData *const old = pvdData;
  pvdData = other.pvdData->MakeCopy();
  delete old;
  return *this;
}

int ZnVariant::operator==(ZnVariant const &other) const { return IsLike(other) ? pvdData->Compare(other.pvdData) : 0; }
int ZnVariant::operator!=(ZnVariant const &other) const { return !(*this == other); }

ZnVariant::operator bool() const { return static_cast<bool>(*pvdData); }
ZnVariant::operator int() const { return static_cast<int>(*pvdData); }
ZnVariant::operator unsigned int() const { return static_cast<unsigned int>(*pvdData); }
ZnVariant::operator float() const { return static_cast<float>(*pvdData); }
ZnVariant::operator double() const { return static_cast<double>(*pvdData); }
ZnString ZnVariant::ToString() const { return pvdData->ToString(); }

int ZnVariant::Type() const { return pvdData->Type(); }
bool ZnVariant::IsBool() const { return Type() == ZnVariantData::kBool; }
bool ZnVariant::IsInt() const { return Type() == ZnVariantData::kInt || Type() == ZnVariantData::kUnsigned; }
bool ZnVariant::IsFloat() const { return Type() == ZnVariantData::kFloat || Type() == ZnVariantData::kDouble; }
bool ZnVariant::IsNumber() const { return IsInt() || IsFloat(); }
bool ZnVariant::IsString() const { return Type() == ZnVariantData::kString; }

bool ZnVariant::IsLike(ZnVariant const &other) const {
  return (IsBool() && other.IsBool()) || (IsInt() && other.IsInt()) || (IsFloat() && other.IsFloat()) ||
         Type() == other.Type();
}
