// ZnLogger and its file: many threads at once, the places tried for the
// file, a disabled logger, and a forked child.
#include <znutil/logging/ZnLogger.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "LoggerFixture.h"

namespace znutil_test {
namespace {

constexpr int kThreads = 6;
constexpr int kPerThread = 400;

// The numbers that the lines "\t<thread> <number>" carry, per thread, in
// file order.
std::map<int, std::vector<int>> NumbersByThread(std::string const &text) {
  std::map<int, std::vector<int>> numbers;
  std::istringstream lines(text);
  std::string line;
  while (std::getline(lines, line)) {
    int thread = 0, number = 0;
    if (line.size() > 1 && line[0] == '\t' && std::istringstream(line.substr(1)) >> thread >> number) {
      numbers[thread].push_back(number);
    }
  }
  return numbers;
}

TEST_F(LoggerTest, ManyThreadsLoseNothingAndKeepTheirOrder) {
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t] {
      for (int i = 0; i < kPerThread; ++i) {
        std::string const line = std::to_string(t) + " " + std::to_string(i);
        ZnLogger::Log(ZnLogger::kWarning, ZnString("Thread"), ZnString("Load"), ZnString(line.c_str()));
      }
    });
  }
  for (auto &thread : threads) thread.join();
  ZnLogger::Shutdown();  // no waiting before: the stop itself writes the rest
  auto const numbers = NumbersByThread(LogText());
  ASSERT_EQ(static_cast<std::size_t>(kThreads), numbers.size());
  std::vector<int> expected(kPerThread);
  for (int i = 0; i < kPerThread; ++i) expected[i] = i;
  for (auto const &[thread, got] : numbers) EXPECT_EQ(expected, got) << "thread " << thread;
}

TEST_F(LoggerTest, LoggingWhileStoppingLosesNothing) {
  std::atomic<bool> stop(false);
  std::atomic<int> logged(0);
  std::thread writer([&] {
    while (!stop.load()) {
      ZnLogger::Log(ZnLogger::kError, ZnString("Race"), ZnString("Stop"), ZnString(std::to_string(logged.load()).c_str()));
      logged.fetch_add(1);
    }
  });
  for (int round = 0; round < 5; ++round) {
    ASSERT_TRUE(WaitFor([&] { return logged.load() > 50 * (round + 1); }));
    ZnLogger::Shutdown();
  }
  stop.store(true);
  writer.join();
  ZnLogger::Shutdown();
  EXPECT_EQ(logged.load(), Count(LogText(), "  Error  Race  Stop\n"));
}

// The current folder is gone, so the file goes to TEMP; with no TEMP either,
// only the frame shows the record.
TEST_F(LoggerTest, PlaceThatCannotBeWrittenIsSkipped) {
  std::filesystem::create_directory(scratch_ / "gone");
  std::filesystem::current_path(scratch_ / "gone");
  std::filesystem::remove(scratch_ / "gone");
  ZnLogger::Log(ZnLogger::kWarning, ZnString("Place"), ZnString("Temp"), ZnString("to temp"));
  ZnLogger::Shutdown();
  setenv("TEMP", (scratch_ / "missing").c_str(), 1);
  ZnLogger::Log(ZnLogger::kWarning, ZnString("Place"), ZnString("None"), ZnString("frame only"));
  EXPECT_TRUE(WaitFor([] {
    auto const rows = Frame().rows;
    return rows.size() == 1 && std::string(rows[0].fsMessage.Chars()) == "frame only";
  }));
  ZnLogger::Shutdown();
  std::string const temp = ReadFile(scratch_ / "temp/LOGGER.log");
  EXPECT_EQ(1, Count(temp, "\tto temp\n"));
  EXPECT_EQ(0, Count(temp, "frame only"));
}

// A disabled logger cannot be brought back, so it is tried in a child
// (forked while no logger thread runs).
TEST_F(LoggerTest, DisabledLoggerDoesNothing) {
  EXPECT_EXIT(
      {
        ZnLogger::Log(ZnLogger::kWarning, ZnString("Before"), ZnString("Disable"), ZnString("kept"));
        ZnLogger::DisableLogger();
        ZnLogger::Shutdown();  // does nothing: the logger runs on
        bool const running = ZnLogger::LoggerWindow() != nullptr || WaitFor([] { return ZnLogger::LoggerWindow() != nullptr; });
        ZnLogger::Log(ZnLogger::kWarning, ZnString("After"), ZnString("Disable"), ZnString("dropped"));
        bool const dropped = WaitFor([] { return Frame().rows.size() == 1; }) && Frame().rows.size() == 1;
        std::exit(running && dropped && !ZnLogger::Initialize() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  // The child's logger was stopped at its exit, with the record written.
  EXPECT_EQ(1, Count(LogText(), "\tkept\n"));
  EXPECT_EQ(0, Count(LogText(), "\tdropped\n"));
}

// The child of a fork has none of its parent's threads: it starts a logger
// of its own, writes only what it logged, and its stop (the one at its exit
// as well) does not wait for the parent's logger thread. The child leaves
// by _exit: the data of the parent's threads, which it cannot free, would
// count as leaks at a normal exit under LeakSanitizer.
TEST_F(LoggerTest, AForkedChildHasALoggerOfItsOwn) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "ThreadSanitizer starts no thread in the child of a threaded process";
#endif
  ZnLogger::Log(ZnLogger::kWarning, ZnString("Parent"), ZnString("Fork"), ZnString("from the parent"));
  ASSERT_TRUE(WaitForInFile("\tfrom the parent\n"));
  ZnLogger::Log(ZnLogger::kWarning, ZnString("Parent"), ZnString("Fork"), ZnString("queued in the parent"));
  EXPECT_EXIT(
      {
        ZnLogger::Log(ZnLogger::kWarning, ZnString("Child"), ZnString("Fork"), ZnString("from the child"));
        bool const started = ZnLogger::IsInitialized();
        ZnLogger::Shutdown();
        std::_Exit(started ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  ZnLogger::Shutdown();
  std::string const text = LogText();
  for (char const *line : {"\tfrom the parent\n", "\tqueued in the parent\n", "\tfrom the child\n"}) {
    EXPECT_EQ(1, Count(text, line)) << line;
  }
}

TEST_F(LoggerTest, FirstLogOnADisabledLoggerCreatesNothing) {
  EXPECT_EXIT(
      {
        ZnLogger::DisableLogger();
        ZnLogger::Log(ZnLogger::kError, ZnString("S"), ZnString("C"), ZnString("nothing"));
        // The first start fails and leaves its flag set, so the next one
        // returns true at once with nothing running.
        bool const starts = !ZnLogger::Initialize() && ZnLogger::Initialize();
        std::exit(starts && ZnLogger::LoggerWindow() == nullptr && !ZnLogger::IsInitialized() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  EXPECT_FALSE(std::filesystem::exists(scratch_ / "LOGGER.log"));
}

}  // namespace
}  // namespace znutil_test
