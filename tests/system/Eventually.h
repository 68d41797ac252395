// Test helper: waits for a condition that another thread or process brings
// about, by polling with a deadline instead of sleeping a fixed time.
#ifndef ZNUTIL_TESTS_SYSTEM_EVENTUALLY_H
#define ZNUTIL_TESTS_SYSTEM_EVENTUALLY_H

#include <chrono>
#include <functional>
#include <thread>

namespace znutil_test {

// Polls `condition` every few milliseconds; false if it still does not
// hold after `seconds`.
inline bool Eventually(std::function<bool()> const &condition, int seconds = 10) {
  auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_SYSTEM_EVENTUALLY_H
