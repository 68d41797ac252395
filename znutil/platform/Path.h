// Paths on their way to the system.
//
// The library keeps paths in its own text form, `\` or `/` separating the
// parts; only here, right before a system call, do they take the system's
// form.
//
//   int fd = open(ToSystemPath(path).c_str(), O_RDONLY);
#ifndef ZNUTIL_PLATFORM_PATH_H
#define ZNUTIL_PLATFORM_PATH_H

#include <string>

#include <znutil/platform/Export.h>

namespace znutil {
namespace platform {

/// `path` with every `\` turned into `/`. A drive prefix such as "C:" means
/// nothing here and passes through unchanged, and so a file whose Linux
/// name holds a backslash cannot be named.
ZNUTIL_API std::string ToSystemPath(char const *path);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_PATH_H
