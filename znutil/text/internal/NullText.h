// The buffer of the null string's shared ref.
#ifndef ZNUTIL_TEXT_INTERNAL_NULLTEXT_H
#define ZNUTIL_TEXT_INTERNAL_NULLTEXT_H

namespace znutil {
namespace detail {

/// 32 characters of room and the terminator, all NUL, never written.
extern char nullText[33];

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_TEXT_INTERNAL_NULLTEXT_H
