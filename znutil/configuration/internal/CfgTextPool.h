// The text pool of one parse: one block for the copies of all matched
// texts. Every match takes at least one input character and its copy at
// most that many bytes and a terminator, so a block of twice the input and
// one byte never fills up.
#ifndef ZNUTIL_CONFIGURATION_INTERNAL_CFGTEXTPOOL_H
#define ZNUTIL_CONFIGURATION_INTERNAL_CFGTEXTPOOL_H

#include <cstddef>
#include <cstring>
#include <memory>

namespace znutil {
namespace detail {

class CfgTextPool {
 public:
  explicit CfgTextPool(std::size_t inputSize)
      : pcStart(new char[2 * inputSize + 1]), pcNext(pcStart.get()), szSize(2 * inputSize + 1) {}

  /// A copy of the `length` bytes at `text` and a terminator, or "" when
  /// it would not fit.
  char const *Copy(char const *text, std::size_t length) {
    if (length >= szSize - static_cast<std::size_t>(pcNext - pcStart.get())) return "";
    char *copy = pcNext;
    std::memcpy(copy, text, length);
    copy[length] = '\0';
    pcNext += length + 1;
    return copy;
  }

 private:
  std::unique_ptr<char[]> pcStart;
  char *pcNext;
  std::size_t szSize;
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_CONFIGURATION_INTERNAL_CFGTEXTPOOL_H
