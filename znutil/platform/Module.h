// What the process knows of its own modules: the running executable's path
// (GetModuleFileNameA of no module) and this library's module handle.
#ifndef ZNUTIL_PLATFORM_MODULE_H
#define ZNUTIL_PLATFORM_MODULE_H

#include <string>

#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

/// The full path of the running executable in the library's form, with no
/// length limit; empty if it cannot be read.
std::string ExecutablePath();

/// This library's module handle: the address at which it is loaded.
HINSTANCE LibraryModule();

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_MODULE_H
