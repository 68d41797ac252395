// ZnVersionResource: reads a version resource and stamps new version
// numbers into its fixed part, in place.
//
//   ZnExeResources image("build\\app.exe");
//   ZnVersionResource version(static_cast<unsigned char *>(image.FindResourceA(RT_VERSION, 1, 0x409)));
//   ZnString before = version.GetFileVersion();    // e.g. "2.13.0.7"
//   version.SetFileVersion("2.14");                // the view, and so the file, now say 2.14.0.0
//   ZnULong length;
//   unsigned short *company = version.GetString(key, &length);
//
// Only the numbers of the fixed part change; the string table is read
// only. The object points into the block it was bound to and dies with it.
//
// The string table is found by a walk that keeps two deliberate limits:
// only the tables "040904b0" and "040904e4" are taken, and one block is
// stepped to the next by its wLength plus 2, not by the format's rounding
// to 4, so a table reached only behind a block of another size is not
// found. The version numbers work all the same.
//
// Nothing is read beyond the block's own wLength, nor beyond the end of a
// mapped view that holds the block, so a damaged length cannot make the
// walk read outside the file.
#ifndef ZNUTIL_SYSTEM_ZNVERSIONRESOURCE_H
#define ZNUTIL_SYSTEM_ZNVERSIONRESOURCE_H

#include <cstddef>

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnVersionResource {
 public:
  /// The version resource (type 16, number 1) of a loaded module. Modules
  /// on this system carry no Windows resources, so the object stays
  /// unbound: no strings, and the null string for the versions.
  explicit ZnVersionResource(HINSTANCE module);
  /// Binds to the version block at `block`; null leaves it unbound.
  explicit ZnVersionResource(unsigned char *block);

  /// The value of the string `key` (case does not matter) of the chosen
  /// table, or null. `*length` receives its 16-bit units without the
  /// terminator: wValueLength - 1, so 0xFFFFFFFF for an entry with no value
  /// (whose value is null). 0 when nothing is found.
  unsigned short *GetString(unsigned short const *key, ZnULong *length);
  /// "A.B.C.D" from dwFileVersionMS and dwFileVersionLS; the null string
  /// without a fixed part.
  ZnString GetFileVersion();
  /// The same from dwProductVersionMS and dwProductVersionLS.
  ZnString GetProductVersion();
  /// Writes up to four numbers separated by "." into the file version, as
  /// strtok and atoi read them: a missing number is 0, a bad one is what
  /// atoi makes of it, each keeps its low 16 bits, more than four are
  /// ignored. Does nothing without a fixed part.
  void SetFileVersion(ZnString const &text);
  void SetProductVersion(ZnString const &text);

 private:
  void BindToAddress(unsigned char *block);
  /// The pair of version numbers at `offset` in the fixed part.
  ZnString VersionText(std::size_t offset) const;
  void StampVersion(std::size_t offset, ZnString const &text);

  /// The version block, its fixed part, and the chosen string table's first
  /// entry and end.
  unsigned char *pResource;
  unsigned char *pStrings;
  unsigned char *pStringsEnd;
  unsigned char *pFixedInfo;
  /// The end of the bytes that may be read.
  unsigned char *pResourceEnd;
};

#endif  // ZNUTIL_SYSTEM_ZNVERSIONRESOURCE_H
