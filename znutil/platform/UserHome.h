// The home folder that the %HOME% path token stands for.
#ifndef ZNUTIL_PLATFORM_USERHOME_H
#define ZNUTIL_PLATFORM_USERHOME_H

#include <string>

namespace znutil {
namespace platform {

/// $HOME in the library's path form; if it is unset or empty, `\home\`
/// followed by $USERNAME, or by $USER when that is unset or empty too.
std::string UserHomeDirectory();

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_USERHOME_H
