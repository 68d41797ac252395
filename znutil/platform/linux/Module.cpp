// The executable's path from /proc/self/exe; the library's module from dladdr;
// plug-ins through dlopen.
#include <znutil/platform/Module.h>

#include <dlfcn.h>
#include <unistd.h>

#include <znutil/platform/PathText.h>

namespace znutil {
namespace platform {

std::string ExecutablePath() {
  std::string path(256, '\0');
  for (;;) {
    ssize_t const length = readlink("/proc/self/exe", &path[0], path.size());
    if (length < 0) return std::string();
    if (static_cast<std::size_t>(length) < path.size()) {
      path.resize(static_cast<std::size_t>(length));
      return FromSystemPath(path);
    }
    path.resize(path.size() * 2);  // it may have been cut: read again with more room
  }
}

HINSTANCE LibraryModule() {
  // Any object of the library tells which module it lies in.
  static char const marker = 0;
  Dl_info info;
  return dladdr(&marker, &info) != 0 ? info.dli_fbase : nullptr;
}

HMODULE LoadLibraryA(char const *path, std::string *error) {
  if (path == nullptr || *path == '\0') {
    if (error != nullptr) *error = "no path";
    return nullptr;
  }
  HMODULE const module = dlopen(ToSystemPath(path).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr && error != nullptr) *error = dlerror();
  return module;
}

void *GetProcAddress(HMODULE module, char const *name) {
  return module != nullptr && name != nullptr ? dlsym(module, name) : nullptr;
}

bool FreeLibrary(HMODULE module) { return module != nullptr && dlclose(module) == 0; }

}  // namespace platform
}  // namespace znutil
