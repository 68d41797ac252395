#include <znutil/values/ZnBinary.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include <znutil/memory/ZnFixedBlockAllocator.h>
#include <znutil/values/ZnBinaryStream.h>
#include <znutil/values/internal/StringBytes.h>

std::atomic<bool> ZnBinary::bInitialized(false);
std::atomic<bool> ZnBinary::bLittleEndian(false);

// Construction.

ZnBinary::ZnBinary() { Init(); }

ZnBinary::ZnBinary(ZnBinary const &other) : ZnBinary() { Store(other.pucData, other.udwLength); }

ZnBinary::ZnBinary(ZnBinaryStream const &stream) : ZnBinary() {
  ZnULong const size = stream.Size();
  AllocBuffer(size);
  stream.CopyBytes(pucData);
  udwLength = size;
}

ZnBinary::ZnBinary(int value) : ZnBinary() { StoreScalar(value); }
ZnBinary::ZnBinary(unsigned int value) : ZnBinary() { StoreScalar(value); }
ZnBinary::ZnBinary(long value) : ZnBinary() { StoreScalar(static_cast<ZnLong>(value)); }
ZnBinary::ZnBinary(unsigned long value) : ZnBinary() { StoreScalar(static_cast<ZnULong>(value)); }
ZnBinary::ZnBinary(float value) : ZnBinary() { StoreScalar(value); }
ZnBinary::ZnBinary(double value) : ZnBinary() { StoreScalar(value); }

ZnBinary::ZnBinary(ZnString const &text) : ZnBinary() { ZnBinary::Store(text); }

ZnBinary::~ZnBinary() { DeallocBuffer(); }

void ZnBinary::Init() {
  // The host's byte order is assigned, never probed.
  if (!bInitialized.load(std::memory_order_relaxed)) {
    bInitialized.store(true, std::memory_order_relaxed);
    bLittleEndian.store(true, std::memory_order_relaxed);
  }
  udwLength = 0;
  udwCapacity = kInlineSize;
  pucData = aucInline;
  // Zeroed once, so that reading past the length of a fresh value is
  // deterministic; later stores leave earlier bytes behind, as designed.
  std::memset(aucInline, 0, sizeof aucInline);
}

// Storage.

void ZnBinary::AllocBuffer(ZnULong size) {
  DeallocBuffer();
  if (size > kInlineSize) {
    pucData = static_cast<unsigned char *>(ZnFixedBlockAllocator::Alloc(size));
    udwCapacity = size;
  }
}

void ZnBinary::DeallocBuffer() {
  if (pucData != aucInline) ZnFixedBlockAllocator::Free(pucData);
  pucData = aucInline;
  udwCapacity = kInlineSize;
  udwLength = 0;
}

void ZnBinary::EndianCopyData(void *destination, void const *source, ZnULong count) {
  if (bLittleEndian.load(std::memory_order_relaxed)) {
    std::memcpy(destination, source, count);
    return;
  }
  auto *to = static_cast<unsigned char *>(destination);
  auto const *from = static_cast<unsigned char const *>(source);
  std::reverse_copy(from, from + count, to);
}

template <typename T>
void ZnBinary::StoreScalar(T value) {
  DeallocBuffer();
  EndianCopyData(pucData, &value, sizeof value);
  udwLength = sizeof value;
}

template <typename T>
T ZnBinary::Decode() const {
  // Every storage holds at least 64 bytes, so this never reads outside it.
  T value;
  EndianCopyData(&value, pucData, sizeof value);
  return value;
}

ZnBinary &ZnBinary::operator=(ZnBinary const &other) {
  AllocBuffer(other.udwLength);
  // Read after AllocBuffer cleared it: a value assigned to itself ends up
  // empty, with a fresh block of its old length if it had one. Deliberate.
  udwLength = other.udwLength;
  if (udwLength != 0) std::memcpy(pucData, other.pucData, udwLength);
  return *this;
}

void ZnBinary::Store(unsigned char const *bytes, ZnULong count) {
  // The new storage is filled before the old is released, so that bytes
  // taken from this very value stay readable while they are copied.
  unsigned char *storage =
      count > kInlineSize ? static_cast<unsigned char *>(ZnFixedBlockAllocator::Alloc(count)) : aucInline;
  if (count != 0) std::memmove(storage, bytes, count);
  DeallocBuffer();
  pucData = storage;
  udwCapacity = std::max(count, kInlineSize);
  udwLength = count;
}

void ZnBinary::Store(ZnString const &text) {
  Store(reinterpret_cast<unsigned char const *>(znutil::detail::CharactersOf(text)),
        static_cast<ZnULong>(text.Length()));
}

void ZnBinary::Store(double value) { StoreScalar(value);
}
void ZnBinary::Store(float value) { StoreScalar(value);
}
void ZnBinary::Store(unsigned long value) { StoreScalar(static_cast<ZnULong>(value));
}
void ZnBinary::Store(long value) { StoreScalar(static_cast<ZnLong>(value));
}
void ZnBinary::Store(unsigned int value) { StoreScalar(value);
}
void ZnBinary::Store(int value) { StoreScalar(value);
}

// Comparison.

int ZnBinary::operator==(ZnBinary const &other) const {
  return udwLength == other.udwLength && std::memcmp(pucData, other.pucData, udwLength) == 0;
}

int ZnBinary::operator!=(ZnBinary const &other) const { return !(*this == other); }

int ZnBinary::Compare(ZnBinary const &other) const {
  int const bytes = std::memcmp(pucData, other.pucData, std::min(udwLength, other.udwLength));
  if (bytes != 0) return bytes < 0 ? -1 : 1;
  if (udwLength == other.udwLength) return 0;
  return udwLength < other.udwLength ? -1 : 1;
}

// Conversions.

ZnBinary::operator int() const { return Decode<int>(); }
ZnBinary::operator unsigned int() const { return Decode<unsigned int>(); }
ZnBinary::operator long() const { return Decode<ZnLong>(); }
ZnBinary::operator unsigned long() const { return Decode<ZnULong>(); }
ZnBinary::operator float() const { return Decode<float>(); }
ZnBinary::operator double() const { return Decode<double>(); }

ZnBinary::operator ZnString() {
  // Bounded by the storage, so that bytes with no zero among them cannot
  // lead the text out of the object.
  return znutil::detail::TextOfBytes(pucData, udwCapacity);
}

ZnBinary::operator unsigned char *() const { return pucData; }

ZnString ZnBinary::Dump(bool lineBreaks) {
  if (udwLength == 0) return ZnString();
  static char const kDigits[] = "0123456789abcdef";
  std::vector<char> text;
  text.reserve(udwLength * 4 + 1);
  int onLine = 0;
  for (ZnULong i = 0; i < udwLength; ++i) {
    text.insert(text.end(), {'x', kDigits[pucData[i] >> 4], kDigits[pucData[i] & 15]});
    if (i + 1 == udwLength) break;
    text.push_back(',');
    if (!lineBreaks) continue;
    // A line holds 19 bytes: the counter passes 17 after the 19th comma.
    if (onLine > 17) {
      text.insert(text.end(), {'\r', '\n'});
      onLine = 0;
    } else {
      ++onLine;
    }
  }
  text.push_back('\0');
  ZnString result(ZnStringSize(static_cast<int>(udwLength * 4)));
  result << text.data();
  return result;
}
