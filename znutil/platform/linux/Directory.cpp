// Directory services over getcwd.
#include <znutil/platform/PathText.h>

#include <unistd.h>

namespace znutil {
namespace platform {

std::string CurrentDirectory() {
  char buffer[4096];
  return getcwd(buffer, sizeof buffer) != nullptr ? FromSystemPath(buffer) : std::string();
}

}  // namespace platform
}  // namespace znutil
