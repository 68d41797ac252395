// Helpers for the event tests: waiting for another thread by polling with
// a generous deadline, never by sleeping.
#ifndef ZNUTIL_TESTS_CONCURRENCY_EVENTTESTSUPPORT_H
#define ZNUTIL_TESTS_CONCURRENCY_EVENTTESTSUPPORT_H

#include <chrono>
#include <thread>

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

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_CONCURRENCY_EVENTTESTSUPPORT_H
