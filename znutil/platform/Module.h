// What the process knows of its own modules: the running executable's path
// (GetModuleFileNameA of no module) and this library's module handle; and
// the loading of other modules (plug-ins) at run time.
#ifndef ZNUTIL_PLATFORM_MODULE_H
#define ZNUTIL_PLATFORM_MODULE_H

#include <string>

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

/// The full path of the running executable in the library's form, with no
/// length limit; empty if it cannot be read.
std::string ExecutablePath();

/// This library's module handle: the address at which it is loaded.
HINSTANCE LibraryModule();

/// Loads the shared object at `path` (library form), resolving all of its
/// symbols now and keeping them to itself; loading one already loaded
/// counts once more. Null on failure, with the loader's reason in `*error`
/// when it is given.
ZNUTIL_API HMODULE LoadLibraryA(char const *path, std::string *error = nullptr);
/// The address of the symbol `name` of a module that LoadLibraryA gave;
/// null if it has none.
ZNUTIL_API void *GetProcAddress(HMODULE module, char const *name);
/// Takes back one LoadLibraryA; the module leaves the process with the last.
/// Nothing of it may be used afterwards. False for a null module.
ZNUTIL_API bool FreeLibrary(HMODULE module);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_MODULE_H
