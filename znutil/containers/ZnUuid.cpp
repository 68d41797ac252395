#include <znutil/containers/ZnUuid.h>

#include <cstdio>
#include <cstring>

#include <znutil/containers/ZnHash.h>
#include <znutil/platform/Random.h>
#include <znutil/text/ZnString.h>

ZnNullUuid const NULL_UUID;

namespace {

unsigned char const kZeroBytes[16] = {};

}  // namespace

ZnUuid::ZnUuid(ZnNullUuid const &) { *this = NULL_UUID; }

ZnUuid &ZnUuid::operator=(ZnNullUuid const &) {
  std::memcpy(this, kZeroBytes, sizeof *this);
  return *this;
}

void ZnUuid::Create() {
  znutil::platform::RandomBytes(this, sizeof *this);
  wData3 = static_cast<WORD>((wData3 & 0x0FFF) | 0x4000);                 // version 4
  abData4[0] = static_cast<BYTE>((abData4[0] & 0x3F) | 0x80);             // RFC 4122 variant
}

bool ZnUuid::operator==(ZnUuid const &other) const { return std::memcmp(this, &other, sizeof *this) == 0; }

bool ZnUuid::operator==(ZnNullUuid const &) const { return std::memcmp(this, kZeroBytes, sizeof *this) == 0; }

int ZnUuid::Compare(ZnUuid const &other) const {
  int const result = std::memcmp(this, &other, sizeof *this);
  return (result > 0) - (result < 0);
}

ZnULong ZnUuid::Hash() const { return ZnHash(this, sizeof *this); }

ZnUuid::operator ZnString() const {
  char text[37];
  std::snprintf(text, sizeof text, "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", udwData1, wData2, wData3,
                abData4[0], abData4[1], abData4[2], abData4[3], abData4[4], abData4[5], abData4[6], abData4[7]);
  return ZnString(text);
}
