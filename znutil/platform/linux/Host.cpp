// The computer's name over gethostname.
#include <znutil/platform/Host.h>

#include <unistd.h>

namespace znutil {
namespace platform {

std::string ComputerName() {
  char name[256] = {};
  if (gethostname(name, sizeof name - 1) != 0) return std::string();
  std::string text(name);
  return text.substr(0, text.find('.'));
}

}  // namespace platform
}  // namespace znutil
