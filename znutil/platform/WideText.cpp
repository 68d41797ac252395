#include <znutil/platform/WideText.h>

namespace znutil {
namespace platform {

std::size_t WideLength(unsigned short const *text) {
  std::size_t length = 0;
  while (text[length] != 0) ++length;
  return length;
}

std::size_t WideToNarrow(char *target, unsigned short const *source, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    unsigned short const unit = source[i];
    target[i] = unit < 256 ? static_cast<char>(unit) : '?';
    if (unit == 0) return i;
  }
  return count;
}

std::size_t NarrowToWide(unsigned short *target, char const *source, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    target[i] = static_cast<unsigned char>(source[i]);
    if (target[i] == 0) return i;
  }
  return count;
}

}  // namespace platform
}  // namespace znutil
