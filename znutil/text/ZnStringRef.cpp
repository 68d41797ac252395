#include <znutil/text/ZnStringRef.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <memory>

#include <znutil/memory/ZnFixedBlockAllocator.h>
#include <znutil/platform/WideText.h>
#include <znutil/text/internal/NullText.h>

namespace platform = znutil::platform;

int ZnStringRef::nNumPadChars = 32;

namespace {

char *NewBuffer(int maxLength) {
  return static_cast<char *>(ZnFixedBlockAllocator::Alloc(static_cast<unsigned long>(maxLength) + 1));
}

int Clamp(int n) { return n < 0 ? 0 : n; }

int Length(char const *text) { return text != nullptr ? static_cast<int>(std::strlen(text)) : 0; }

int Length(unsigned short const *text) {
  return text != nullptr ? static_cast<int>(platform::WideLength(text)) : 0;
}

// A private copy of text that lies in the buffer about to be changed.
class StableText {
 public:
  StableText(char const *text, int n, ZnStringRef const &target) : text_(text) {
    char const *buffer = target.GetInternal();
    if (buffer != nullptr && text >= buffer && text <= buffer + target.GetMaxLength()) {
      copy_.reset(new char[n > 0 ? n : 1]);
      std::memcpy(copy_.get(), text, static_cast<std::size_t>(n));
      text_ = copy_.get();
    }
  }
  char const *Get() const { return text_; }

 private:
  char const *text_;
  std::unique_ptr<char[]> copy_;
};

}  // namespace

ZnStringRef::ZnStringRef() : pcBuffer(nullptr), iLength(0), iMaxLength(0), iCount(0) { MakeCopy(""); }

ZnStringRef::ZnStringRef(char const *text) : pcBuffer(nullptr), iLength(0), iMaxLength(0), iCount(0) {
  MakeCopy(text);
}

ZnStringRef::ZnStringRef(unsigned short const *text) : pcBuffer(nullptr), iLength(0), iMaxLength(0), iCount(0) {
  MakeCopy(text);
}

ZnStringRef::ZnStringRef(char const *text, int n)
    : pcBuffer(NewBuffer(Clamp(n))), iLength(Clamp(n)), iMaxLength(Clamp(n)), iCount(0) {
  // strncpy, which pads with NULs where the text is shorter than n.
  char const *source = text != nullptr ? text : "";
  std::size_t const kept = strnlen(source, static_cast<std::size_t>(iLength));
  std::memcpy(pcBuffer, source, kept);
  std::memset(pcBuffer + kept, 0, static_cast<std::size_t>(iLength) - kept + 1);
  bNulFree = kept == static_cast<std::size_t>(iLength);
}

ZnStringRef::ZnStringRef(ZnStringRef const &other) : pcBuffer(nullptr), iLength(0), iMaxLength(0), iCount(0) {
  MakeCopy(other);
}

// A negative hint takes its share of the slack; only the total is kept from going below 0.
ZnStringRef::ZnStringRef(int n)
    : pcBuffer(NewBuffer(Clamp(n + nNumPadChars))),
      iLength(0),
      iMaxLength(Clamp(n + nNumPadChars)),
      iCount(0),
      bNulFree(true) {
  pcBuffer[0] = '\0';
}

ZnStringRef::~ZnStringRef() {
  if (pcBuffer != znutil::detail::nullText) ZnFixedBlockAllocator::Free(pcBuffer);
}

ZnStringRef &ZnStringRef::operator=(ZnStringRef const &other) {
  if (this != &other) {
    MakeCopy(other);
    iCount = other.iCount;
  }
  return *this;
}

void ZnStringRef::Grow(int n, bool keepText) {
  int const maxLength = n + nNumPadChars;
  char *buffer = NewBuffer(maxLength);
  if (keepText) {
    // The old text up to and including its first NUL.
    std::size_t const kept = pcBuffer != nullptr ? std::strlen(pcBuffer) : 0;
    std::memcpy(buffer, pcBuffer != nullptr ? pcBuffer : "", kept + 1);
  }
  ZnFixedBlockAllocator::Free(pcBuffer);
  pcBuffer = buffer;
  iMaxLength = maxLength;
}

// Both leave the new characters to the caller, who knows what they hold.
void ZnStringRef::AllocBuffer(int n) {
  iLength = n;
  bNulFree = false;
  if (n > iMaxLength || iMaxLength == 0) Grow(n, false);
}

void ZnStringRef::ReallocBuffer(int n) {
  iLength = n;
  bNulFree = false;
  if (n > iMaxLength || iMaxLength == 0) Grow(n, true);
}

void ZnStringRef::SetMaxLength(int n) {
  if (n + nNumPadChars > iMaxLength) Grow(n, true);
}

void ZnStringRef::MakeCopy(ZnStringRef const &other) {
  if (this == &other) return;
  int const n = other.iLength;
  AllocBuffer(n);
  if (other.pcBuffer != nullptr)
    std::memcpy(pcBuffer, other.pcBuffer, static_cast<std::size_t>(n) + 1);
  else
    pcBuffer[0] = '\0';
  bNulFree = other.bNulFree || n == 0;
}

void ZnStringRef::MakeCopy(char const *text) {
  if (text == nullptr) return;
  int const n = Length(text);
  StableText const source(text, n, *this);
  AllocBuffer(n);
  std::memcpy(pcBuffer, source.Get(), static_cast<std::size_t>(n));
  pcBuffer[n] = '\0';
  bNulFree = true;
}

void ZnStringRef::MakeCopy(unsigned short const *text) {
  if (text == nullptr) return;
  int const n = Length(text);
  AllocBuffer(n);
  platform::WideToNarrow(pcBuffer, text, static_cast<std::size_t>(n));
  pcBuffer[n] = '\0';
  bNulFree = true;
  NoteBytes(pcBuffer, n);
}

// The Internal forms write no further than the buffer holds.
void ZnStringRef::CopyToInternal(char const *text) {
  bNulFree = false;  // the length is not set to the text
  int const n = std::min(Length(text), iMaxLength);
  std::memmove(pcBuffer, text, static_cast<std::size_t>(n));
  pcBuffer[n] = '\0';
}

void ZnStringRef::CopyToInternal(unsigned short const *text) {
  bNulFree = false;  // the length is not set to the text
  int const n = std::min(iLength, iMaxLength);
  platform::WideToNarrow(pcBuffer, text, static_cast<std::size_t>(n));
  pcBuffer[n] = '\0';
}

void ZnStringRef::AppendToInternal(char const *text, int start) {
  bNulFree = false;  // the length is not set to the text
  int const end = start + Length(pcBuffer + start);
  int const n = std::min(Length(text), iMaxLength - end);
  std::memmove(pcBuffer + end, text, static_cast<std::size_t>(n));
  pcBuffer[end + n] = '\0';
}

void ZnStringRef::AppendToInternal(unsigned short const *text, int start) {
  bNulFree = false;  // the length is not set to the text
  int const end = std::min(iLength, iMaxLength);
  platform::WideToNarrow(pcBuffer + start, text, static_cast<std::size_t>(end - start));
  pcBuffer[end] = '\0';
}

void ZnStringRef::PrependToInternal(char const *text, int n) {
  bNulFree = false;  // the length is not set to the text
  n = std::min(n, iMaxLength - Length(pcBuffer));
  std::memmove(pcBuffer + n, pcBuffer, std::strlen(pcBuffer) + 1);
  std::strncpy(pcBuffer, text, static_cast<std::size_t>(n));
}

void ZnStringRef::PrependToInternal(unsigned short const *text, int n) {
  bNulFree = false;  // the length is not set to the text
  n = std::min(n, iMaxLength - Length(pcBuffer));
  std::memmove(pcBuffer + n, pcBuffer, std::strlen(pcBuffer) + 1);
  for (int i = 0; i < n; ++i) {
    char c;
    platform::WideToNarrow(&c, text + i, 1);
    pcBuffer[i] = c;
  }
}

void ZnStringRef::NoteBytes(char const *text, int n) {
  if (std::memchr(text, 0, static_cast<std::size_t>(n)) != nullptr) bNulFree = false;
}

void ZnStringRef::AppendBytes(char const *text, int n) {
  StableText const source(text, n, *this);
  int const start = iLength;
  bool const nulFree = bNulFree;
  ReallocBuffer(iLength + n);
  std::memcpy(pcBuffer + start, source.Get(), static_cast<std::size_t>(n));
  pcBuffer[iLength] = '\0';
  bNulFree = nulFree;
}

void ZnStringRef::PrependBytes(char const *text, int n) {
  StableText const source(text, n, *this);
  int const old = iLength;
  bool const nulFree = bNulFree;
  ReallocBuffer(iLength + n);
  std::memmove(pcBuffer + n, pcBuffer, static_cast<std::size_t>(old) + 1);
  std::memcpy(pcBuffer, source.Get(), static_cast<std::size_t>(n));
  bNulFree = nulFree;
}

void ZnStringRef::Append(ZnStringRef const &other) { AppendBytes(other.pcBuffer, Length(other.pcBuffer)); }

void ZnStringRef::Append(char const *text) { AppendBytes(text, Length(text)); }

void ZnStringRef::Append(unsigned short const *text) {
  int const n = Length(text);
  int const start = iLength;
  bool const nulFree = bNulFree;
  ReallocBuffer(iLength + n);
  platform::WideToNarrow(pcBuffer + start, text, static_cast<std::size_t>(n));
  pcBuffer[iLength] = '\0';
  bNulFree = nulFree;
  NoteBytes(pcBuffer + start, n);
}

void ZnStringRef::Append(char c) {
  // A NUL character, unlike measured text, is noted after the append.
  AppendBytes(&c, 1);
  NoteBytes(&c, 1);
}

void ZnStringRef::Append(unsigned short c) { Append(static_cast<char>(c & 0xFF)); }

void ZnStringRef::Prepend(ZnStringRef const &other) { PrependBytes(other.pcBuffer, Length(other.pcBuffer)); }

void ZnStringRef::Prepend(char const *text) { PrependBytes(text, Length(text)); }

void ZnStringRef::Prepend(unsigned short const *text) {
  int const n = Length(text);
  std::unique_ptr<char[]> narrow(new char[static_cast<std::size_t>(n) + 1]);
  platform::WideToNarrow(narrow.get(), text, static_cast<std::size_t>(n));
  PrependBytes(narrow.get(), n);
  NoteBytes(narrow.get(), n);
}

void ZnStringRef::ReplaceString(ZnStringRef const &s, int start, int count) {
  // Arguments beyond the text are the caller's fault; they are clamped so
  // that nothing outside the buffer is touched.
  start = std::min(Clamp(start), iLength);
  count = std::min(Clamp(count), iLength - start);
  int const added = Length(s.pcBuffer);
  StableText const source(s.pcBuffer, added, *this);
  if (iLength - count + added > iMaxLength) {
    // Grown from the old max length, not from the length: deliberate.
    int const maxLength = iMaxLength - count + added + nNumPadChars;
    char *buffer = NewBuffer(maxLength);
    std::memcpy(buffer, pcBuffer, static_cast<std::size_t>(iLength) + 1);
    ZnFixedBlockAllocator::Free(pcBuffer);
    pcBuffer = buffer;
    iMaxLength = maxLength;
  }
  int const tail = iLength - start - count;
  std::memmove(pcBuffer + start + added, pcBuffer + start + count, static_cast<std::size_t>(tail));
  std::memcpy(pcBuffer + start, source.Get(), static_cast<std::size_t>(added));
  iLength += added - count;
  pcBuffer[iLength] = '\0';
}

int ZnStringRef::CompareToInternal(char const *text) const {
  int const result = std::strcmp(pcBuffer != nullptr ? pcBuffer : "", text != nullptr ? text : "");
  return (result > 0) - (result < 0);
}

int ZnStringRef::CompareToInternal(unsigned short const *text) const {
  int const n = Length(text);
  char *narrow = NewBuffer(n);
  if (text != nullptr) platform::WideToNarrow(narrow, text, static_cast<std::size_t>(n));
  narrow[n] = '\0';
  int const result = CompareToInternal(narrow);
  ZnFixedBlockAllocator::Free(narrow);
  return result;
}

namespace {

unsigned char Byte(char c) { return static_cast<unsigned char>(c); }

bool IsSpace(char c) { return std::isspace(Byte(c)) != 0; }

}  // namespace

void ZnStringRef::ConvertToUpper() {
  for (int i = 0; i < iLength; ++i)
    if (std::islower(Byte(pcBuffer[i]))) pcBuffer[i] = static_cast<char>(std::toupper(Byte(pcBuffer[i])));
}

void ZnStringRef::ConvertToLower() {
  for (int i = 0; i < iLength; ++i)
    if (std::isupper(Byte(pcBuffer[i]))) pcBuffer[i] = static_cast<char>(std::tolower(Byte(pcBuffer[i])));
}

void ZnStringRef::Capitalize() {
  int i = 0;
  while (i < iLength && IsSpace(pcBuffer[i])) ++i;
  if (i < iLength && std::islower(Byte(pcBuffer[i]))) pcBuffer[i] = static_cast<char>(std::toupper(Byte(pcBuffer[i])));
  for (++i; i < iLength; ++i)
    if (std::isupper(Byte(pcBuffer[i]))) pcBuffer[i] = static_cast<char>(std::tolower(Byte(pcBuffer[i])));
}

void ZnStringRef::Truncate(int n) {
  if (n < 0 || n >= iLength) return;
  pcBuffer[n] = '\0';
  iLength = Length(pcBuffer);
  bNulFree = true;
}

bool ZnStringRef::SetCharacter(int i, char c) {
  if (i < 0 || i >= iLength) return false;
  pcBuffer[i] = c;
  NoteBytes(&c, 1);
  return true;
}

void ZnStringRef::StripWhiteSpace() {
  int kept = 0;
  for (int i = 0; i < iLength; ++i)
    if (!IsSpace(pcBuffer[i])) pcBuffer[kept++] = pcBuffer[i];
  iLength = kept;
  pcBuffer[iLength] = '\0';
}

void ZnStringRef::NoLeadingWhiteSpace() {
  int first = 0;
  while (first < iLength && IsSpace(pcBuffer[first])) ++first;
  iLength -= first;
  std::memmove(pcBuffer, pcBuffer + first, static_cast<std::size_t>(iLength) + 1);
}

void ZnStringRef::NoTrailingWhiteSpace() {
  while (iLength > 0 && IsSpace(pcBuffer[iLength - 1])) --iLength;
  pcBuffer[iLength] = '\0';
}

unsigned short *ZnStringRef::DuplicateUnicode() const {
  auto *copy = new unsigned short[static_cast<std::size_t>(iLength) + 1];
  platform::NarrowToWide(copy, pcBuffer != nullptr ? pcBuffer : "", static_cast<std::size_t>(iLength));
  copy[iLength] = 0;
  return copy;
}

char *ZnStringRef::DuplicateAscii() const {
  auto *copy = new char[static_cast<std::size_t>(iLength) + 1];
  std::memcpy(copy, pcBuffer != nullptr ? pcBuffer : "", static_cast<std::size_t>(iLength));
  copy[iLength] = '\0';
  return copy;
}

namespace {

// The escape letter of the seven characters that have one, else 0.
char EscapeLetter(unsigned char c) {
  switch (c) {
    case 8: return 'b';
    case 9: return 't';
    case 10: return 'n';
    case 13: return 'r';
    case '"': return '"';
    case '\'': return '\'';
    case '\\': return '\\';
    default: return 0;
  }
}

int EscapedWidth(unsigned char c) { return EscapeLetter(c) != 0 ? 2 : std::isprint(c) ? 1 : 5; }

}  // namespace

void ZnStringRef::ConvertToCString() {
  int total = 0;
  for (int i = 0; i < iLength; ++i) total += EscapedWidth(Byte(pcBuffer[i]));
  int const maxLength = total + nNumPadChars;
  char *buffer = NewBuffer(maxLength);
  char *out = buffer;
  for (int i = 0; i < iLength; ++i) {
    unsigned char const c = Byte(pcBuffer[i]);
    if (char const letter = EscapeLetter(c)) {
      *out++ = '\\';
      *out++ = letter;
    } else if (std::isprint(c)) {
      *out++ = static_cast<char>(c);
    } else {
      out += std::snprintf(out, 6, "\\x%03x", c);
    }
  }
  *out = '\0';
  ZnFixedBlockAllocator::Free(pcBuffer);
  pcBuffer = buffer;
  iMaxLength = maxLength;
  iLength = Length(pcBuffer);
  bNulFree = true;
}

ZnStringRef *ZnStringRef::CopyOnWrite() { return new ZnStringRef(*this); }
