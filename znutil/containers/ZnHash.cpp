#include <znutil/containers/ZnHash.h>

namespace {

constexpr ZnULong kGoldenRatio = 0x9e3779b9u;

// The reversible mix of lookup2: nine steps, each x -= y; x -= z; x ^= z
// shifted, turning through (a, b, c), (b, c, a) and (c, a, b).
inline void Mix(ZnULong &a, ZnULong &b, ZnULong &c) {
  a -= b; a -= c; a ^= (c >> 13);
  b -= c; b -= a; b ^= (a << 8);
  c -= a; c -= b; c ^= (b >> 13);
  a -= b; a -= c; a ^= (c >> 12);
  b -= c; b -= a; b ^= (a << 16);
  c -= a; c -= b; c ^= (b >> 5);
  a -= b; a -= c; a ^= (c >> 3);
  b -= c; b -= a; b ^= (a << 10);
  c -= a; c -= b; c ^= (b >> 15);
}

// count bytes from bytes, little-endian, into a value at shift first.
inline ZnULong Gather(unsigned char const *bytes, ZnULong count, unsigned first) {
  ZnULong value = 0;
  for (ZnULong i = 0; i < count; ++i) value += static_cast<ZnULong>(bytes[i]) << (first + 8 * i);
  return value;
}

inline ZnULong Word(unsigned char const *bytes) { return Gather(bytes, 4, 0); }

}  // namespace

ZnULong ZnHash(void const *key, ZnULong length, ZnULong seed) {
  auto const *bytes = static_cast<unsigned char const *>(key);
  ZnULong a = kGoldenRatio, b = kGoldenRatio, c = seed;
  ZnULong left = length;
  for (; left >= 12; left -= 12, bytes += 12) {
    a += Word(bytes);
    b += Word(bytes + 4);
    c += Word(bytes + 8);
    Mix(a, b, c);
  }
  c += length;
  // The tail: the low byte of c holds the length, so bytes 8-10 go above it.
  if (left > 8) c += Gather(bytes + 8, left - 8, 8);
  if (left > 4) b += Gather(bytes + 4, (left > 8 ? 8 : left) - 4, 0);
  a += Gather(bytes, left > 4 ? 4 : left, 0);
  Mix(a, b, c);
  return c;
}
