// Helpers for the event tests: polling with a deadline (never sleeping to
// wait for a thread), and whether a thread is asleep in the kernel.
#ifndef ZNUTIL_TESTS_CONCURRENCY_EVENTTESTSUPPORT_H
#define ZNUTIL_TESTS_CONCURRENCY_EVENTTESTSUPPORT_H

#include <fstream>
#include <iterator>
#include <string>

#include <sys/syscall.h>
#include <unistd.h>

#include "../system/Eventually.h"

namespace znutil_test {

// The calling thread's kernel id.
inline long ThreadId() { return syscall(SYS_gettid); }

// Whether the thread `id` of this process sleeps in the kernel ("S").
inline bool Asleep(long id) {
  std::ifstream stat("/proc/self/task/" + std::to_string(id) + "/stat");
  std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
  std::size_t const end = text.rfind(')');  // the name may hold spaces
  return end != std::string::npos && text.compare(end, 4, ") S ") == 0;
}

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_CONCURRENCY_EVENTTESTSUPPORT_H
