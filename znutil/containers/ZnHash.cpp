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

// A little-endian 32-bit word, whatever the alignment; compilers turn this
// into one load.
inline ZnULong Word(unsigned char const *bytes) {
  return static_cast<ZnULong>(bytes[0]) | static_cast<ZnULong>(bytes[1]) << 8 | static_cast<ZnULong>(bytes[2]) << 16 |
         static_cast<ZnULong>(bytes[3]) << 24;
}

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
  // The tail, last byte first; the low byte of c holds the length, so
  // bytes 8-10 go above it. Every case falls through to the next.
  switch (left) {
    case 11: c += static_cast<ZnULong>(bytes[10]) << 24; [[fallthrough]];
    case 10: c += static_cast<ZnULong>(bytes[9]) << 16; [[fallthrough]];
    case 9: c += static_cast<ZnULong>(bytes[8]) << 8; [[fallthrough]];
    case 8: b += static_cast<ZnULong>(bytes[7]) << 24; [[fallthrough]];
    case 7: b += static_cast<ZnULong>(bytes[6]) << 16; [[fallthrough]];
    case 6: b += static_cast<ZnULong>(bytes[5]) << 8; [[fallthrough]];
    case 5: b += bytes[4]; [[fallthrough]];
    case 4: a += static_cast<ZnULong>(bytes[3]) << 24; [[fallthrough]];
    case 3: a += static_cast<ZnULong>(bytes[2]) << 16; [[fallthrough]];
    case 2: a += static_cast<ZnULong>(bytes[1]) << 8; [[fallthrough]];
    case 1: a += bytes[0]; break;
    default: break;
  }
  Mix(a, b, c);
  return c;
}
