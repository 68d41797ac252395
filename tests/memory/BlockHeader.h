// Reads the documented 16-byte header in front of an allocator block.
#ifndef ZNUTIL_TESTS_MEMORY_BLOCKHEADER_H
#define ZNUTIL_TESTS_MEMORY_BLOCKHEADER_H

#include <cstdint>
#include <cstring>

namespace znutil_test {

inline std::uint8_t StateTag(void *block) { return static_cast<std::uint8_t *>(block)[-16]; }

inline std::uint8_t HeapIndex(void *block) { return static_cast<std::uint8_t *>(block)[-15]; }

inline std::uint16_t SizeClassIndex(void *block) {
  std::uint16_t index;
  std::memcpy(&index, static_cast<std::uint8_t *>(block) - 14, sizeof index);
  return index;
}

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_MEMORY_BLOCKHEADER_H
