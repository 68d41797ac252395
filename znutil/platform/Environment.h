// The process's environment variables.
//
//   std::string path;
//   if (znutil::platform::GetEnvironmentVariableA("PATH", &path)) ...
//
// The environment has no lock: a thread that changes it while another
// reads it is the application's error, as with getenv and setenv.
#ifndef ZNUTIL_PLATFORM_ENVIRONMENT_H
#define ZNUTIL_PLATFORM_ENVIRONMENT_H

#include <string>

namespace znutil {
namespace platform {

/// Gives the value of `name` and true, or false when it is not set.
bool GetEnvironmentVariableA(char const *name, std::string *value);

/// Sets `name` in this process's environment; an empty value removes it,
/// as `_putenv("NAME=")` does. False for a name that cannot be set (empty,
/// or holding '=').
bool SetEnvironmentVariableA(char const *name, char const *value);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_ENVIRONMENT_H
