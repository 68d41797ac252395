// The Windows type names of the library's interface, defined once with the
// widths of the original 32-bit design.
//
// Every value whose width is fixed by a file format, a stream, a hash or a
// status code uses one of these aliases, so that it keeps its 32-bit width
// and wrap-around on a 64-bit host. These are plain definitions, not system
// types: no system header stands behind them.
#ifndef ZNUTIL_PLATFORM_WINTYPES_H
#define ZNUTIL_PLATFORM_WINTYPES_H

#include <cstdint>

/// The 32-bit `long` and `unsigned long` of stored and transmitted values.
typedef std::int32_t ZnLong;
typedef std::uint32_t ZnULong;

typedef std::uint8_t BYTE;
typedef std::uint16_t WORD;
typedef std::uint32_t DWORD;
typedef std::int32_t LONG;
typedef std::uint32_t ULONG;
typedef std::uint32_t UINT;
typedef int BOOL;
typedef std::uint16_t WCHAR;
typedef void *HANDLE;
typedef void *HINSTANCE;
typedef void *HMODULE;
typedef void *HWND;
/// The two parameters of a thread message, pointer-wide as on 64-bit Windows.
typedef std::uintptr_t WPARAM;
typedef std::intptr_t LPARAM;

/// A COM-style status: 0 (S_OK) is success.
typedef ZnLong HRESULT;
#define S_OK 0

/// An open registry key, or one of the predefined roots below. The roots
/// keep their Windows values (sign-extended, as on 64-bit Windows).
typedef void *HKEY;
#define ZNUTIL_PREDEFINED_HKEY(value) \
  (reinterpret_cast<HKEY>(static_cast<std::intptr_t>(static_cast<std::int32_t>(value))))
#define HKEY_CLASSES_ROOT ZNUTIL_PREDEFINED_HKEY(0x80000000u)
#define HKEY_CURRENT_USER ZNUTIL_PREDEFINED_HKEY(0x80000001u)
#define HKEY_LOCAL_MACHINE ZNUTIL_PREDEFINED_HKEY(0x80000002u)
#define HKEY_USERS ZNUTIL_PREDEFINED_HKEY(0x80000003u)

/// Registry value types.
#define REG_NONE 0u
#define REG_SZ 1u
#define REG_EXPAND_SZ 2u
#define REG_BINARY 3u
#define REG_DWORD 4u
#define REG_DWORD_BIG_ENDIAN 5u
#define REG_LINK 6u
#define REG_MULTI_SZ 7u
#define REG_QWORD 11u

/// Registry access rights and creation results.
#define KEY_READ 0x20019u
#define KEY_ALL_ACCESS 0xF003Fu
#define REG_OPTION_NON_VOLATILE 0u
#define REG_CREATED_NEW_KEY 1u
#define REG_OPENED_EXISTING_KEY 2u

/// The Windows error codes that the registry calls return.
#define ERROR_SUCCESS 0
#define ERROR_FILE_NOT_FOUND 2
#define ERROR_ACCESS_DENIED 5
#define ERROR_INVALID_HANDLE 6
#define ERROR_GEN_FAILURE 31
#define ERROR_INVALID_PARAMETER 87
#define ERROR_FILENAME_EXCED_RANGE 206
#define ERROR_MORE_DATA 234

/// Marks a handle that refers to nothing, as returned by failed opens.
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-1)))

/// Waits for ever.
#define INFINITE 0xFFFFFFFFu

/// The thread message that asks a message loop to end.
#define WM_QUIT 0x0012u

/// A point in time in 100-nanosecond units since 1601-01-01 UTC, split in
/// two 32-bit halves, low half first.
struct FILETIME {
  DWORD dwLowDateTime;
  DWORD dwHighDateTime;
};

/// Broken-down calendar time, eight 16-bit fields in the published order.
struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;
  WORD wDayOfWeek;
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};


/// The longest path of the original, terminator included.
#define MAX_PATH 260

/// File attribute bits, as the directory listing and GetFileAttributesA give them.
#define FILE_ATTRIBUTE_READONLY 0x1u
#define FILE_ATTRIBUTE_HIDDEN 0x2u
#define FILE_ATTRIBUTE_DIRECTORY 0x10u
#define FILE_ATTRIBUTE_NORMAL 0x80u
/// What GetFileAttributesA returns for a path that names nothing.
#define INVALID_FILE_ATTRIBUTES 0xFFFFFFFFu

/// Facts about an open file, in the published field order.
struct BY_HANDLE_FILE_INFORMATION {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
  DWORD dwVolumeSerialNumber;
  DWORD nFileSizeHigh;
  DWORD nFileSizeLow;
  DWORD nNumberOfLinks;
  DWORD nFileIndexHigh;
  DWORD nFileIndexLow;
};
static_assert(sizeof(BY_HANDLE_FILE_INFORMATION) == 52, "BY_HANDLE_FILE_INFORMATION is 52 bytes");

/// One entry of a directory listing, in the published field order.
struct WIN32_FIND_DATAA {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
  DWORD nFileSizeHigh;
  DWORD nFileSizeLow;
  DWORD dwReserved0;
  DWORD dwReserved1;
  char cFileName[MAX_PATH];
  char cAlternateFileName[14];
};

#endif  // ZNUTIL_PLATFORM_WINTYPES_H
