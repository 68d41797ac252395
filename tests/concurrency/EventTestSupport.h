// Helpers for the event tests: waiting for another thread by polling with
// a generous deadline, never by sleeping.
#ifndef ZNUTIL_TESTS_CONCURRENCY_EVENTTESTSUPPORT_H
#define ZNUTIL_TESTS_CONCURRENCY_EVENTTESTSUPPORT_H

#include <chrono>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include <sys/syscall.h>
#include <unistd.h>

namespace znutil_test {

// Calls `done` until it yields true; false if that takes beyond 20 s.
template <class Predicate>
bool Eventually(Predicate done) {
  auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::yield();
  }
  return true;
}

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
