// The library's path text and the system's.
//
// Paths stay in the library's own form everywhere: `\` separates parts in
// results, `/` and `\` are both accepted, and an `X:` drive prefix is passed
// through (it has no meaning on Linux). Only the seam turns a path into the
// system's form, just before a system call, and back. A Linux name that
// contains a backslash therefore cannot be named.
#ifndef ZNUTIL_PLATFORM_PATHTEXT_H
#define ZNUTIL_PLATFORM_PATHTEXT_H

#include <string>

namespace znutil {
namespace platform {

/// `\` becomes `/`; a leading drive prefix is dropped.
std::string ToSystemPath(char const *path);

/// `/` becomes `\`.
std::string FromSystemPath(std::string path);

/// The current directory in the library's form; empty if it cannot be read.
std::string CurrentDirectory();

/// GetFullPathNameA: a path that does not start with a separator (or a
/// drive and a separator) is joined to the current directory; `.` and `..`
/// parts are folded; the result uses `\`.
std::string FullPathName(char const *path);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_PATHTEXT_H
