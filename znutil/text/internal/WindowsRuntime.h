// The Windows run-time text functions the library relies on, with their
// Windows rules: _stricmp, _splitpath and _makepath.
#ifndef ZNUTIL_TEXT_INTERNAL_WINDOWSRUNTIME_H
#define ZNUTIL_TEXT_INTERNAL_WINDOWSRUNTIME_H

namespace znutil {
namespace detail {

/// Buffer sizes of _splitpath and _makepath, terminator included.
constexpr int kMaxDrive = 4;
constexpr int kMaxDir = 256;
constexpr int kMaxName = 256;
constexpr int kMaxExt = 256;
constexpr int kMaxPath = 260;

/// Compares lower-cased bytes; the difference of the first unequal pair.
int StrICmp(char const *left, char const *right);

/// Splits a path: drive (letter and colon), directory (through the last `\`
/// or `/`), name, and extension (from the last dot after the directory).
/// Each piece is cut to its buffer size; a null target is skipped.
void SplitPath(char const *path, char *drive, char *dir, char *name, char *ext);

/// Joins the pieces into `path` (kMaxPath): a colon after the drive letter,
/// a `\` after a directory that lacks a separator, a dot before an
/// extension that lacks one. The result is cut to the buffer.
void MakePath(char *path, char const *drive, char const *dir, char const *name, char const *ext);

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_TEXT_INTERNAL_WINDOWSRUNTIME_H
