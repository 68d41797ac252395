// ZnStreamError: the 32-bit status of a stream, and the mode of a file
// stream.
#ifndef ZNUTIL_VALUES_ZNSTREAMERROR_H
#define ZNUTIL_VALUES_ZNSTREAMERROR_H

#include <cstdint>

/// The status of a stream. The library attaches no text to any value.
/// Value 2 has no name: no operation produces it.
enum ZnStreamError : std::int32_t {
  ZnStreamOk = 0,
  ZnStreamOpenError = 1,
  ZnStreamReadError = 3,
  ZnStreamWriteError = 4,
  ZnStreamSeekError = 5,
};

/// The mode of a file stream. Every test is against ZnFileRead, so any
/// other value behaves as ZnFileWrite.
enum ZnFileMode : std::int32_t {
  ZnFileRead = 0,
  ZnFileWrite = 1,
};

#endif  // ZNUTIL_VALUES_ZNSTREAMERROR_H
