// What the library knows of the computer it runs on.
#ifndef ZNUTIL_PLATFORM_HOST_H
#define ZNUTIL_PLATFORM_HOST_H

#include <string>

namespace znutil {
namespace platform {

/// The computer's name as GetComputerNameA gives it: the host name without
/// its domain part, at most 255 characters; empty if it cannot be read.
std::string ComputerName();

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_HOST_H
