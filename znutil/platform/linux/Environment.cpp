// Environment variables over getenv, setenv and unsetenv.
#include <znutil/platform/Environment.h>

#include <cstdlib>

namespace znutil {
namespace platform {

bool GetEnvironmentVariableA(char const *name, std::string *value) {
  char const *found = name != nullptr ? std::getenv(name) : nullptr;
  if (found == nullptr) return false;
  *value = found;
  return true;
}

bool SetEnvironmentVariableA(char const *name, char const *value) {
  if (name == nullptr) return false;
  if (value == nullptr || value[0] == '\0') return unsetenv(name) == 0;
  return setenv(name, value, 1) == 0;
}

}  // namespace platform
}  // namespace znutil
