// ZnHash: the hash of every key type in the library, Bob Jenkins' lookup2
// in its 32-bit form.
//
//   ZnULong h = ZnHash("abc", 3);   // 0x251e4793
//
// Keys are read as little-endian 32-bit words, so a value hashes the same
// whatever its address's alignment.
#ifndef ZNUTIL_CONTAINERS_ZNHASH_H
#define ZNUTIL_CONTAINERS_ZNHASH_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

/// The 32-bit lookup2 hash of length bytes at key; the library always uses
/// seed 0.
ZNUTIL_API ZnULong ZnHash(void const *key, ZnULong length, ZnULong seed = 0);

#endif  // ZNUTIL_CONTAINERS_ZNHASH_H
