// Path text conversion; plain string work that needs no system service.
#include <znutil/platform/Path.h>

#include <algorithm>

namespace znutil {
namespace platform {

std::string ToSystemPath(char const *path) {
  std::string converted(path);
  std::replace(converted.begin(), converted.end(), '\\', '/');
  return converted;
}

}  // namespace platform
}  // namespace znutil
