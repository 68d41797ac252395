// The %HOME% token from the environment. The user's name stands in for a
// missing HOME the way the original's fixed users folder did.
#include <znutil/platform/UserHome.h>

#include <cstdlib>

#include <znutil/platform/PathText.h>

namespace znutil {
namespace platform {
namespace {

std::string Variable(char const *name) {
  char const *value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

std::string UserHomeDirectory() {
  std::string const home = Variable("HOME");
  if (!home.empty()) return FromSystemPath(home);
  std::string const user = Variable("USERNAME");
  return "\\home\\" + (user.empty() ? Variable("USER") : user);
}

}  // namespace platform
}  // namespace znutil
