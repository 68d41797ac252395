// The folder part of a path, and making it when it is missing, as a file
// stream does before it opens a file. Not part of the interface.
#ifndef ZNUTIL_VALUES_INTERNAL_FOLDEROFPATH_H
#define ZNUTIL_VALUES_INTERNAL_FOLDEROFPATH_H

#include <string>

namespace znutil {
namespace detail {

/// Drive and directory of `path` as path splitting gives them: everything
/// up to and including the last `\` or `/`, or the drive alone, or nothing.
std::string FolderOfPath(std::string const &path);

/// Makes the folder of `path`, and every missing folder above it, when it
/// does not exist. Failures are ignored: opening the file reports them.
void MakeFolderOfPath(std::string const &path);

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_VALUES_INTERNAL_FOLDEROFPATH_H
