// The registry calls of the library, over a store of its own in the file
// system (Linux has no registry).
//
//   HKEY key;
//   if (RegCreateKeyExA(HKEY_CURRENT_USER, "Software\\Acme", 0, "", REG_OPTION_NON_VOLATILE,
//                       KEY_ALL_ACCESS, nullptr, &key, nullptr) == ERROR_SUCCESS) {
//     RegSetValueExA(key, "Colour", 0, REG_SZ, reinterpret_cast<BYTE const *>("red"), 4);
//     RegCloseKey(key);
//   }
//
// The store lives in $ZNUTIL_REGISTRY_DIR, else $XDG_CONFIG_HOME/znutil/registry,
// else $HOME/.config/znutil/registry (empty variables count as unset), read
// at each open. Each predefined root and each key is a folder; each value is
// a file holding its type and its bytes. Key paths separate names with `\`
// or `/`. Key and value names compare without regard to ASCII case. Access
// rights are not checked: the folder's permissions decide. Results are
// Windows error codes (ERROR_SUCCESS is 0).
#ifndef ZNUTIL_PLATFORM_REGISTRY_H
#define ZNUTIL_PLATFORM_REGISTRY_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

/// Opens the existing key `subKey` under `key` (a root or an open key); an
/// empty or null `subKey` opens `key` itself. ERROR_FILE_NOT_FOUND when the
/// key does not exist.
ZNUTIL_API LONG RegOpenKeyExA(HKEY key, char const *subKey, DWORD options, DWORD access, HKEY *result);

/// Opens `subKey` under `key`, creating it and its missing parents. The
/// class and the security attributes are ignored. `disposition`, if not
/// null, gets REG_CREATED_NEW_KEY or REG_OPENED_EXISTING_KEY.
ZNUTIL_API LONG RegCreateKeyExA(HKEY key, char const *subKey, DWORD reserved, char const *keyClass,
                                DWORD options, DWORD access, void *security, HKEY *result,
                                DWORD *disposition);

/// Reads a value's type and bytes. With null `data`, reports the type and
/// the size alone; with a buffer too small for the bytes, puts the size in
/// `*size` and returns ERROR_MORE_DATA. ERROR_FILE_NOT_FOUND for a value
/// that does not exist.
ZNUTIL_API LONG RegQueryValueExA(HKEY key, char const *name, DWORD *reserved, DWORD *type, BYTE *data,
                                 DWORD *size);

/// Replaces (or makes) a value with `type` and `size` bytes of `data`, in
/// one step: a reader sees the old value or the new one, never a part.
ZNUTIL_API LONG RegSetValueExA(HKEY key, char const *name, DWORD reserved, DWORD type, BYTE const *data,
                               DWORD size);

/// Closes an open key; the predefined roots need no closing and stay good.
ZNUTIL_API LONG RegCloseKey(HKEY key);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_REGISTRY_H
