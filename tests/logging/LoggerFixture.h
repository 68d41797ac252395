// Test helpers for the logger: a scratch folder as the current directory
// (where the log file lands while the library knows no start-up folder),
// TEMP pointed into it, and waits with a deadline for the logger thread.
#ifndef ZNUTIL_TESTS_LOGGING_LOGGERFIXTURE_H
#define ZNUTIL_TESTS_LOGGING_LOGGERFIXTURE_H

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>

#include <znutil/logging/ZnLogger.h>
#include <znutil/logging/ZnLoggerFrame.h>

#include "../system/Eventually.h"
#include "../system/ScratchDirectory.h"

#include <gtest/gtest.h>

namespace znutil_test {

// Waits up to ten seconds for the logger thread to bring `done` about.
inline bool WaitFor(std::function<bool()> const &done) { return Eventually(done); }

// The frame as it is now; an empty snapshot without a frame.
inline ZnLoggerFrame::Snapshot Frame() {
  ZnLoggerFrame::Snapshot seen;
  ZnLoggerFrame::Capture(&seen);
  return seen;
}

// Counts the occurrences of `what` in `text`.
inline int Count(std::string const &text, std::string const &what) {
  int found = 0;
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) ++found;
  return found;
}

class LoggerTest : public testing::Test {
 protected:
  void SetUp() override {
    home_ = std::filesystem::current_path();
    std::filesystem::create_directory(scratch_ / "temp");
    setenv("TEMP", (scratch_ / "temp").c_str(), 1);
    std::filesystem::current_path(scratch_.Path());
  }
  // The logger is one per process: each test leaves it stopped and as it
  // found it.
  void TearDown() override {
    ZnLogger::Shutdown();
    for (int index = 0; index < ZnLogger::kFilterCount; ++index) {
      ZnLogger::Filter(index, index <= ZnLogger::kFilterError, ZnString());
    }
    ZnLogger::ClearFlags(ZnLogger::kQuiet | ZnLogger::kLoud);
    ZnLogger::EnableWindowOutput(true);
    std::filesystem::current_path(home_);
  }

  // The log file in the current folder, as far as it is written.
  std::string LogText() const { return ReadFile(scratch_ / "LOGGER.log"); }
  // Waits until the file holds `count` occurrences of `what`.
  bool WaitForInFile(std::string const &what, int count = 1) const {
    return WaitFor([&] { return Count(LogText(), what) >= count; });
  }
  // Waits until the frame shows `count` rows.
  static bool WaitForRows(std::size_t count) {
    return WaitFor([&] { return Frame().rows.size() >= count; });
  }

  ScratchDirectory scratch_;
  std::filesystem::path home_;
};

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_LOGGING_LOGGERFIXTURE_H
