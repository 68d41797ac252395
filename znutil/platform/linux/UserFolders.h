// The user's folders and the making of folders, shared by the directory
// calls and the registry store. System paths, with `/`.
#ifndef ZNUTIL_PLATFORM_LINUX_USERFOLDERS_H
#define ZNUTIL_PLATFORM_LINUX_USERFOLDERS_H

#include <string>

namespace znutil {
namespace platform {

/// An environment variable's value; empty when it is not set.
std::string Variable(char const *name);

/// $HOME, else the home of the user's password entry, else "/".
std::string HomeDirectory();

/// Makes a folder and every missing ancestor; true if it exists afterwards
/// (or something of that name does).
bool MakeFolders(std::string const &path);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_LINUX_USERFOLDERS_H
