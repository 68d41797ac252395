// The folder part of a path, and making it when it is missing, as a file
// stream does before it opens a file. Not part of the interface.
#ifndef ZNUTIL_VALUES_INTERNAL_FOLDEROFPATH_H
#define ZNUTIL_VALUES_INTERNAL_FOLDEROFPATH_H

#include <znutil/text/ZnString.h>

namespace znutil {
namespace detail {

/// Makes the folder of `path` (its drive and directory, as SplitPath gives
/// them), and every missing folder above it, when it does not exist.
/// Failures are ignored: opening the file reports them.
void MakeFolderOfPath(ZnString const &path);

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_VALUES_INTERNAL_FOLDEROFPATH_H
