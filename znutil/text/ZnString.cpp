#include <znutil/text/ZnString.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <znutil/text/ZnPointerStorageString.h>
#include <znutil/text/internal/NullText.h>

char znutil::detail::nullText[33] = {};

// Built at compile time, so it exists before any static constructor runs.
ZnStringRef ZnString::znsrNullInitializer(ZnStringRef::NullTag{}, znutil::detail::nullText);

ZnNullString const NULL_STRING;

namespace {

// Formats one number; 64 characters hold any int, and "%f" of any float.
template <typename T>
struct Number {
  Number(char const *format, T value) { std::snprintf(text, sizeof text, format, value); }
  char text[352];  // "%f" of the largest double needs 317 characters
};

}  // namespace

// Storage management.

void ZnString::Destroy() { delete pzsrRef; }

void ZnString::Take(ZnStringRef *ref) {
  pzsrRef = ref;
  pzsrRef->IncrementCount();
}

void ZnString::CopyOnWrite(int size) {
  if (IsNull()) {
    // The size is a hint for this case alone.
    Take(new ZnStringRef(size));
  } else if (pzsrRef->GetCount() >= 2) {
    pzsrRef->DecrementCount();
    Take(pzsrRef->CopyOnWrite());
  }
}

ZnPointerStorageString *ZnString::CreatePointerStorage() const {
  if (auto *storage = dynamic_cast<ZnPointerStorageString *>(pzsrRef)) return storage;
  auto *storage = IsNull() ? new ZnPointerStorageString : new ZnPointerStorageString(*pzsrRef);
  const_cast<ZnString *>(this)->Dereference();
  const_cast<ZnString *>(this)->Take(storage);
  return storage;
}

void ZnString::Compact() const {
  if (auto *storage = dynamic_cast<ZnPointerStorageString *>(pzsrRef)) {
    auto *plain = new ZnStringRef(*storage);
    const_cast<ZnString *>(this)->Dereference();
    const_cast<ZnString *>(this)->Take(plain);
  }
}

void ZnString::Empty() {
  CopyOnWrite(0);
  pzsrRef->AllocBuffer(0);
  pzsrRef->GetInternal()[0] = '\0';
  pzsrRef->bNulFree = true;
}

// Construction and assignment.

ZnString::ZnString(ZnStringSize const &size) : pzsrRef(NullRef()) { Take(new ZnStringRef(size.GetSize())); }

ZnString::ZnString(char const *text) : pzsrRef(NullRef()) {
  if (text != nullptr) Take(new ZnStringRef(text));
}

ZnString::ZnString(unsigned short const *text) : pzsrRef(NullRef()) {
  if (text != nullptr) Take(new ZnStringRef(text));
}

ZnString::ZnString(int value) : ZnString(Number<int>("%d", value).text) {}

ZnString::ZnString(unsigned int value) : ZnString(Number<unsigned int>("%u", value).text) {}

ZnString::ZnString(float value) : ZnString(Number<double>("%f", value).text) {}

ZnString::ZnString(double value) : ZnString(Number<double>("%lf", value).text) {}

ZnString &ZnString::operator=(ZnString const &other) {
  if (this != &other) {
    ZnStringRef *ref = other.pzsrRef;
    Dereference();
    pzsrRef = ref;
    Share();
  }
  return *this;
}

ZnString &ZnString::operator=(ZnNullString const &) {
  Dereference();
  pzsrRef = NullRef();
  return *this;
}

template <typename Text>
ZnString &ZnString::AssignText(Text const *text) {
  if (IsNull() || pzsrRef->GetCount() > 1) {
    // The old ref is shared, so lowering its count cannot free it.
    if (!IsNull()) pzsrRef->DecrementCount();
    pzsrRef = NullRef();
    if (text != nullptr) Take(new ZnStringRef(text));
  } else if (text == nullptr) {
    Dereference();
    pzsrRef = NullRef();
  } else {
    pzsrRef->MakeCopy(text);
  }
  return *this;
}

ZnString &ZnString::operator=(char const *text) { return AssignText(text); }

ZnString &ZnString::operator=(unsigned short const *text) { return AssignText(text); }

ZnString &ZnString::operator=(int value) { return *this = Number<int>("%i", value).text; }

ZnString &ZnString::operator=(float value) { return *this = Number<double>("%f", value).text; }

ZnString &ZnString::operator=(double value) { return *this = Number<double>("%lf", value).text; }

// Numbers out of text.

ZnString::operator int() const { return std::atoi(pzsrRef->GetInternal()); }

ZnString::operator long() const { return std::atol(pzsrRef->GetInternal()); }

ZnString::operator unsigned int() const {
  unsigned int value = 0;
  std::sscanf(pzsrRef->GetInternal(), "%u", &value);
  return value;
}

ZnString::operator float() const {
  float value = 0;
  std::sscanf(pzsrRef->GetInternal(), "%f", &value);
  return value;
}

ZnString::operator double() const {
  double value = 0;
  std::sscanf(pzsrRef->GetInternal(), "%lf", &value);
  return value;
}

// Pointer conversions.

ZnString::operator char const *() const { return CreatePointerStorage()->RefreshNarrow(); }

ZnString::operator char *() { return CreatePointerStorage()->RefreshNarrow(); }

ZnString::operator unsigned short const *() const { return CreatePointerStorage()->RefreshWide(); }

ZnString::operator unsigned short *() { return CreatePointerStorage()->RefreshWide(); }

// Appending and prepending.

namespace {

int HintOf(char const *text) { return text != nullptr ? static_cast<int>(std::strlen(text)) : 0; }

int HintOf(unsigned short const *text) {
  int n = 0;
  while (text != nullptr && text[n] != 0) ++n;
  return n;
}

}  // namespace

template <typename Text>
ZnString &ZnString::AppendText(Text const &text, int hint) {
  CopyOnWrite(hint);
  pzsrRef->Append(text);
  return *this;
}

template <typename Text>
ZnString &ZnString::PrependText(Text const &text, int hint) {
  CopyOnWrite(hint);
  pzsrRef->Prepend(text);
  return *this;
}

ZnString &ZnString::operator<<(ZnString const &text) { return AppendText(*text.pzsrRef, text.Length()); }

ZnString &ZnString::operator<<(char const *text) {
  // The hint is the text's length: measured once, for both uses.
  int const n = HintOf(text);
  CopyOnWrite(n);
  pzsrRef->AppendBytes(text, n);
  return *this;
}

ZnString &ZnString::operator<<(unsigned short const *text) { return AppendText(text, HintOf(text)); }

ZnString &ZnString::operator<<(char c) { return AppendText(c, 4); }

ZnString &ZnString::operator<<(unsigned short c) { return AppendText(c, 4); }

ZnString &ZnString::operator<<(int value) { return *this << Number<int>("%i", value).text; }

ZnString &ZnString::operator<<(float value) { return *this << Number<double>("%f", value).text; }

ZnString &ZnString::operator<<(double value) { return *this << Number<double>("%lf", value).text; }

ZnString &ZnString::operator>>(ZnString const &text) { return PrependText(*text.pzsrRef, text.Length()); }

ZnString &ZnString::operator>>(char const *text) {
  int const n = HintOf(text);
  CopyOnWrite(n);
  pzsrRef->PrependBytes(text, n);
  return *this;
}

ZnString &ZnString::operator>>(unsigned short const *text) { return PrependText(text, HintOf(text)); }

ZnString &ZnString::operator>>(int value) { return *this >> Number<int>("%i", value).text; }

ZnString &ZnString::operator>>(float value) { return *this >> Number<double>("%f", value).text; }

ZnString &ZnString::operator>>(double value) { return *this >> Number<double>("%lf", value).text; }

ZnString ZnString::operator+(ZnString const &text) const {
  ZnString result(*this);
  result << text;
  return result;
}

// Comparison.


int ZnString::operator==(ZnNullString const &) const {
  return Length() == 0 && (pzsrRef->GetInternal() == nullptr || pzsrRef->GetInternal()[0] == '\0');
}

int ZnString::operator!=(ZnNullString const &null) const { return !(*this == null); }

// Access and cutting.

char ZnString::GetCharacter(int i) const { return i >= 0 && i < Length() ? pzsrRef->GetInternal()[i] : '\0'; }

bool ZnString::SetCharacter(int i, char c) {
  CopyOnWrite(0);
  return pzsrRef->SetCharacter(i, c);
}

ZnString ZnString::Substring(int start, int n) const {
  // Substrings have no slack: the exact-size constructor is deliberate.
  return ZnString(new ZnStringRef(pzsrRef->GetInternal() + start, n));
}

ZnString ZnString::LeftString(int n) const {
  if (n < 1) return ZnString();
  return Substring(0, n < Length() ? n : Length());
}

ZnString ZnString::RightString(int n) const {
  if (n < 1) return ZnString();
  if (n > Length()) n = Length();
  return Substring(Length() - n, n);
}

ZnString ZnString::MidString(int start, int n) const {
  if (start < 1) start = 0;
  if (start >= Length() || n < 1) return ZnString();
  return Substring(start, n < Length() - start ? n : Length() - start);
}

void ZnString::Truncate(int n) {
  CopyOnWrite(0);
  pzsrRef->Truncate(n);
}

void ZnString::ReplaceString(ZnString const &s, int start, int count) {
  if (start >= Length()) {
    *this << s;
    return;
  }
  CopyOnWrite(s.Length());
  pzsrRef->ReplaceString(*s.pzsrRef, start, count);
}

void ZnString::Fill(char c, int n) {
  CopyOnWrite(n + 1);
  for (int i = 0; i < n; ++i) pzsrRef->Append(c);
}

ZnString ZnString::MakeFill(char c, int n) {
  ZnString result;
  result.Fill(c, n);
  return result;
}

// Case and white space.

ZnString ZnString::Edited(void (ZnString::*edit)()) const {
  ZnString copy(*this);
  (copy.*edit)();
  return copy;
}

void ZnString::EditInPlace(void (ZnStringRef::*edit)()) {
  CopyOnWrite(0);
  (pzsrRef->*edit)();
}

void ZnString::ConvertToUpper() { EditInPlace(&ZnStringRef::ConvertToUpper); }
void ZnString::ConvertToLower() { EditInPlace(&ZnStringRef::ConvertToLower); }
void ZnString::Capitalize() { EditInPlace(&ZnStringRef::Capitalize); }
void ZnString::ConvertToCString() { EditInPlace(&ZnStringRef::ConvertToCString); }
void ZnString::StripWhiteSpace() { EditInPlace(&ZnStringRef::StripWhiteSpace); }
void ZnString::NoLeadingWhiteSpace() { EditInPlace(&ZnStringRef::NoLeadingWhiteSpace); }
void ZnString::NoTrailingWhiteSpace() { EditInPlace(&ZnStringRef::NoTrailingWhiteSpace); }

ZnString ZnString::ToUpper() const { return Edited(&ZnString::ConvertToUpper); }
ZnString ZnString::ToLower() const { return Edited(&ZnString::ConvertToLower); }
ZnString ZnString::ToCapitalize() const { return Edited(&ZnString::Capitalize); }
ZnString ZnString::ToCString() const { return Edited(&ZnString::ConvertToCString); }
ZnString ZnString::ToNoWhite() const { return Edited(&ZnString::StripWhiteSpace); }
ZnString ZnString::ToNoLeadingWhite() const { return Edited(&ZnString::NoLeadingWhiteSpace); }
ZnString ZnString::ToNoTrailingWhite() const { return Edited(&ZnString::NoTrailingWhiteSpace); }
