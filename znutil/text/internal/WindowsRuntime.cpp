#include <znutil/text/internal/WindowsRuntime.h>

#include <cctype>

namespace znutil {
namespace detail {

int StrICmp(char const *left, char const *right) {
  for (;; ++left, ++right) {
    int const l = std::tolower(static_cast<unsigned char>(*left));
    int const r = std::tolower(static_cast<unsigned char>(*right));
    if (l != r || l == 0) return l - r;
  }
}

}  // namespace detail
}  // namespace znutil
