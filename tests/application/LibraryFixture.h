// Test helpers for the started library: a scratch folder that holds the
// profile, the global file's folder, the log folder and TEMP, and the
// library stopped again after each test.
#ifndef ZNUTIL_TESTS_APPLICATION_LIBRARYFIXTURE_H
#define ZNUTIL_TESTS_APPLICATION_LIBRARYFIXTURE_H

#include <cstdlib>
#include <filesystem>
#include <string>

#include <znutil/application/UtilityApp.h>

#include "../concurrency/ThreadTestSupport.h"
#include "../logging/LoggerFixture.h"

#include <gtest/gtest.h>

namespace znutil_test {

// The number of threads of this process. ThreadSanitizer starts a thread
// of its own at a moment of its choosing, so under it the count is not
// compared.
inline int ThreadCount() {
  int count = 0;
#ifndef __SANITIZE_THREAD__
  for (auto const &entry : std::filesystem::directory_iterator("/proc/self/task")) count += entry.exists() ? 1 : 0;
#endif
  return count;
}

class LibraryTest : public testing::Test {
 protected:
  void SetUp() override {
    for (char const *folder : {"system", "logs", "temp"}) std::filesystem::create_directory(scratch_ / folder);
    setenv("ZNUTIL_SYSTEM_DIR", (scratch_ / "system").c_str(), 1);
    setenv("LOGDIR", (scratch_ / "logs").c_str(), 1);
    setenv("TEMP", (scratch_ / "temp").c_str(), 1);
    for (char const *name : {"PLUGINS", "PLUGINS_ORDER"}) unsetenv(name);
    threadsBefore_ = ThreadCount();
  }
  void TearDown() override {
    ShutdownUtilityLibrary();
    // The stop returns when the library's threads have run their last
    // library code; the system removes them a moment later.
    EXPECT_TRUE(WaitFor([this] { return ThreadCount() == threadsBefore_; })) << "a library thread outlived the stop";
  }

  // Starts the library on the scratch profile "app.cfg", with no logger.
  void Start(bool noUserInterface = true) {
    InitializeUtilityLibrary("Test Log", Profile().c_str(), noUserInterface);
  }
  std::string Profile() const { return scratch_ / "app.cfg"; }
  std::string Global() const { return scratch_ / "system/Lumiframe.cfg"; }
  std::string LogFile() const { return scratch_ / "logs/lifetime_test.log"; }

  ScratchDirectory scratch_;
  UtilityApp const app_;
  int threadsBefore_ = 0;
};

}  // namespace znutil_test

#endif  // ZNUTIL_TESTS_APPLICATION_LIBRARYFIXTURE_H
