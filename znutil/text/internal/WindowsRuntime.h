// The Windows run-time text functions the library relies on, with their
// Windows rules: _stricmp, _splitpath and _makepath.
#ifndef ZNUTIL_TEXT_INTERNAL_WINDOWSRUNTIME_H
#define ZNUTIL_TEXT_INTERNAL_WINDOWSRUNTIME_H

namespace znutil {
namespace detail {

/// Compares lower-cased bytes; the difference of the first unequal pair.
int StrICmp(char const *left, char const *right);

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_TEXT_INTERNAL_WINDOWSRUNTIME_H
