#include <znutil/platform/Fork.h>

#include <pthread.h>

namespace znutil {
namespace platform {

bool OnFork(void (*prepare)(), void (*parent)(), void (*child)()) {
  return pthread_atfork(prepare, parent, child) == 0;
}

}  // namespace platform
}  // namespace znutil
