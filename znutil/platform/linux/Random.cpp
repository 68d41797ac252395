// Random bytes over getrandom.
#include <znutil/platform/Random.h>

#include <cerrno>
#include <sys/random.h>

namespace znutil {
namespace platform {

void RandomBytes(void *buffer, std::size_t size) {
  auto *bytes = static_cast<unsigned char *>(buffer);
  while (size > 0) {
    ssize_t const got = getrandom(bytes, size, 0);
    if (got < 0) {
      if (errno == EINTR) continue;
      return;
    }
    bytes += got;
    size -= static_cast<std::size_t>(got);
  }
}

}  // namespace platform
}  // namespace znutil
