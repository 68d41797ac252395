#include <znutil/values/internal/StringBytes.h>

#include <cstring>
#include <vector>

namespace znutil {
namespace detail {

ZnString TextOfBytes(void const *bytes, std::size_t limit) {
  char const *text = static_cast<char const *>(bytes);
  if (std::memchr(text, 0, limit) != nullptr) return ZnString(text);
  std::vector<char> terminated(text, text + limit);
  terminated.push_back('\0');
  return ZnString(terminated.data());
}

}  // namespace detail
}  // namespace znutil
