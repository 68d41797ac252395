// ZnUuid: a 128-bit identifier with the layout of the system's UUID.
//
//   ZnUuid id;                        // a new random identifier
//   ZnString text = id;               // "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx"
//   if (other == NULL_UUID) ...
//
// New identifiers are random (version 4). The text form prints the first
// three fields as the little-endian numbers they are, then the last eight
// bytes in order, in lower-case hexadecimal.
#ifndef ZNUTIL_CONTAINERS_ZNUUID_H
#define ZNUTIL_CONTAINERS_ZNUUID_H

#include <znutil/containers/ZnNullUuid.h>
#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

class ZnString;

class ZNUTIL_API ZnUuid {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  /// A new identifier: every default-constructed value is a fresh one.
  ZnUuid() { Create(); }
  /// All zero.
  ZnUuid(ZnNullUuid const &);
  ZnUuid(ZnUuid const &) = default;
  ZnUuid &operator=(ZnUuid const &) = default;
  ZnUuid &operator=(ZnNullUuid const &);

  /// Makes this a new identifier.
  void Create();

  bool operator==(ZnUuid const &other) const;
  bool operator!=(ZnUuid const &other) const { return !(*this == other); }
  bool operator==(ZnNullUuid const &) const;
  bool operator!=(ZnNullUuid const &null) const { return !(*this == null); }
  /// -1, 0 or 1 over the 16 bytes in memory order, so not in the order of
  /// the text form.
  int Compare(ZnUuid const &other) const;
  /// The library's key hash of the 16 bytes.
  ZnULong Hash() const;
  /// The 8-4-4-4-12 text form.
  operator ZnString() const;

  ZnULong udwData1;
  WORD wData2;
  WORD wData3;
  BYTE abData4[8];
};

static_assert(sizeof(ZnUuid) == 16, "ZnUuid has the 16-byte layout of a UUID");

#endif  // ZNUTIL_CONTAINERS_ZNUUID_H
