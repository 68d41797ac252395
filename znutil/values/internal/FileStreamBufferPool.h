// FileStreamBufferPool: the idle 2,048-byte buffers of buffered file
// streams, shared by the whole library. Not part of the interface; exported
// for the library's tests.
//
// A stream takes the buffer given back last, or a new one when none is
// idle, and gives it back when it is destroyed. Buffers are never freed;
// idle ones stay reachable from the pool. The pool is guarded by a spin
// lock, so streams on any threads may come and go at once.
#ifndef ZNUTIL_VALUES_INTERNAL_FILESTREAMBUFFERPOOL_H
#define ZNUTIL_VALUES_INTERNAL_FILESTREAMBUFFERPOOL_H

#include <cstddef>

#include <znutil/platform/Export.h>

namespace znutil {
namespace detail {

class ZNUTIL_API FileStreamBufferPool {
 public:
  /// The size of every buffer.
  static constexpr std::size_t kBufferSize = 2048;

  /// The buffer given back last, or a new one.
  static char *Take();
  /// Puts `buffer` at the front, to be taken next.
  static void Give(char *buffer);
  /// How many buffers are idle now.
  static std::size_t IdleCount();
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_VALUES_INTERNAL_FILESTREAMBUFFERPOOL_H
