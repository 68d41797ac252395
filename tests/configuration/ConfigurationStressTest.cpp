// Two processes on one configuration file, through their managers: the file
// always parses, both settle on the same content once they stop writing,
// and values set in turns all survive. The test program runs itself twice
// as the two processes (the ConfigurationStressChild case).
#include <znutil/configuration/ZnCfgFile.h>
#include <znutil/configuration/ZnCfgFileParser.h>
#include <znutil/configuration/ZnConfiguration.h>
#include <znutil/configuration/internal/ZnCfgManager.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include <spawn.h>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "../system/Eventually.h"
#include "../system/ScratchDirectory.h"
#include "CfgTestSupport.h"

extern char **environ;

namespace {

using namespace znutil_test;
using Getter = std::function<unsigned long(ZnString const &, ZnString const &, int *)>;

constexpr int kSections = 8, kKeys = 40, kRounds = 6, kValuesPerRound = 4;
constexpr auto kWritingTime = std::chrono::milliseconds(1500);

// Other processes take turns of their own: a longer wait.
bool Soon(std::function<bool()> const &condition) { return Eventually(condition, 20); }

std::string Key(int role, int key) { return std::to_string(role) + "-" + std::to_string(key); }

// Every value the first phase can set, as "section/key=value;" text.
std::string Dump(Getter const &get) {
  std::string dump;
  for (int section = 0; section < kSections; ++section) {
    for (int key = 0; key < 2 * kKeys; ++key) {
      int value;
      std::string const name = "S" + std::to_string(section), entry = Key(key / kKeys, key % kKeys);
      if (get(name.c_str(), entry.c_str(), &value) == 0) dump += name + "/" + entry + "=" + std::to_string(value) + ";";
    }
  }
  return dump;
}

Getter MemoryGetter() {
  return [](ZnString const &s, ZnString const &e, int *value) { return ZnConfiguration().GetIntegerEntry(0, s, e, value); };
}

// The file as it stands on the disk, read by an object of its own.
Getter DiskGetter(std::string const &path) {
  auto file = std::make_shared<ZnCfgFile>(LibraryPath(path));
  file->Refresh();
  return [file](ZnString const &s, ZnString const &e, int *value) { return file->GetIntegerEntry(s, e, "all", value); };
}

std::string RoundEntry(int round, int value) { return "R" + std::to_string(round) + "-" + std::to_string(value); }

bool HasRounds(Getter const &get, int rounds) {
  for (int i = 0; i < rounds * kValuesPerRound; ++i) {
    int got = -1, round = i / kValuesPerRound, value = i % kValuesPerRound;
    if (get("Turns", RoundEntry(round, value).c_str(), &got) != 0 || got != round * 10 + value) return false;
  }
  return true;
}

// One of the two processes.
class Child {
 public:
  Child(int role, std::string const &folder) : role_(role), folder_(folder), file_(folder + "/shared.cfg") {}

  void Run() {
    InitializeConfiguration(LibraryPath(file_));
    std::thread reader([this] { ReadWhileRunning(); });
    WriteForAWhile();
    Converge();
    TakeTurns();
    stop_.store(true);
    reader.join();
    ShutdownConfiguration();
    EXPECT_EQ(0, brokenReads_.load()) << "a reader saw a file that does not parse";
    EXPECT_TRUE(ZnCfgFileParserTestAccess::TakeMessages().empty()) << "the parser reported something";
  }

 private:
  std::string Mark(std::string const &name, int role) const { return folder_ + "/" + name + std::to_string(role); }
  void Signal(std::string const &name) const { WriteFile(Mark(name, role_)); }
  void AwaitOther(std::string const &name) const {
    ASSERT_TRUE(Soon([&] { return std::filesystem::exists(Mark(name, 1 - role_)); })) << name;
  }

  // Reads the shared file over and over. Once written it is never empty
  // again, it always ends where a section ends, and it always parses.
  void ReadWhileRunning() {
    bool written = false;
    for (int i = 0; !stop_.load(); ++i) {
      std::this_thread::sleep_for(std::chrono::microseconds(100));  // pace, not a wait
      std::string const text = ReadFile(file_);
      bool const whole = text.size() >= 4 && text.compare(text.size() - 4, 4, "\r\n\r\n") == 0;
      if (written && !whole) brokenReads_.fetch_add(1);
      written = written || whole;
      if (!written || i % 16 != 0) continue;
      if (!std::unique_ptr<ZnCfgSectionList>(ZnCfgFileParser(LibraryPath(file_)).Parse())) brokenReads_.fetch_add(1);
    }
  }

  void WriteForAWhile() {
    ZnConfiguration configuration;
    auto const end = std::chrono::steady_clock::now() + kWritingTime;
    for (int i = 0; std::chrono::steady_clock::now() < end; ++i) {
      std::string const section = "S" + std::to_string(i % kSections);
      configuration.SetIntegerEntry(0, section.c_str(), Key(role_, i % kKeys).c_str(), i);
      int value;
      // Once set, the tree never goes: a re-read of a part file would drop it.
      ASSERT_NE(3u, configuration.GetIntegerEntry(0, section.c_str(), Key(1 - role_, i % kKeys).c_str(), &value));
      if (i % 16 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    Signal("written");
    AwaitOther("written");
  }

  // Waits until memory matches the disk and the disk has been still for a
  // while, then publishes what memory holds.
  void Converge() {
    std::string last;
    auto stillSince = std::chrono::steady_clock::now();
    ASSERT_TRUE(Soon([&] {
      std::string const disk = ReadFile(file_);
      if (disk != last) last = disk, stillSince = std::chrono::steady_clock::now();
      return Dump(MemoryGetter()) == Dump(DiskGetter(file_)) &&
             std::chrono::steady_clock::now() - stillSince > std::chrono::seconds(1);
    }));
    WriteFile(Mark("dump", role_), Dump(MemoryGetter()));
    AwaitOther("dump");
  }

  // The two set values in turns; each waits to see the other's values in
  // memory before it sets its own, and hands over once its own are on disk.
  void TakeTurns() {
    ZnConfiguration configuration;
    for (int round = role_; round < kRounds; round += 2) {
      if (round > 0) { ASSERT_TRUE(Soon([&] { return std::filesystem::exists(Mark("round", round - 1)); })); }
      ASSERT_TRUE(Soon([&] { return HasRounds(MemoryGetter(), round); })) << "round " << round;
      for (int value = 0; value < kValuesPerRound; ++value)
        configuration.SetIntegerEntry(0, "Turns", RoundEntry(round, value).c_str(), round * 10 + value);
      ASSERT_TRUE(Soon([&] { return HasRounds(DiskGetter(file_), round + 1); })) << "round " << round;
      WriteFile(Mark("round", round));
    }
    EXPECT_TRUE(Soon([&] { return HasRounds(MemoryGetter(), kRounds); }));
    EXPECT_TRUE(HasRounds(DiskGetter(file_), kRounds));
  }

  int role_;
  std::string folder_, file_;
  std::atomic<bool> stop_{false};
  std::atomic<int> brokenReads_{0};
};

TEST(ConfigurationStressChild, Run) {
  char const *role = std::getenv("ZNUTIL_STRESS_ROLE"), *folder = std::getenv("ZNUTIL_STRESS_DIR");
  if (role == nullptr || folder == nullptr) GTEST_SKIP() << "runs as one of the two processes only";
  Child(std::atoi(role), folder).Run();
}

pid_t StartChild(int role, ScratchDirectory const &scratch) {
  std::string const self = std::filesystem::read_symlink("/proc/self/exe").string();
  std::string const system = scratch / ("system" + std::to_string(role));
  std::filesystem::create_directory(system);
  setenv("ZNUTIL_STRESS_ROLE", std::to_string(role).c_str(), 1);
  setenv("ZNUTIL_STRESS_DIR", scratch.Path().c_str(), 1);
  setenv("ZNUTIL_SYSTEM_DIR", system.c_str(), 1);
  char filter[] = "--gtest_filter=ConfigurationStressChild.Run";
  char *arguments[] = {const_cast<char *>(self.c_str()), filter, nullptr};
  pid_t child = -1;
  posix_spawn(&child, self.c_str(), nullptr, nullptr, arguments, environ);
  return child;
}

int ExitStatus(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

TEST(ConfigurationStressTest, TwoProcessesShareOneFile) {
  ScratchDirectory scratch;
  pid_t const first = StartChild(0, scratch), second = StartChild(1, scratch);
  unsetenv("ZNUTIL_STRESS_ROLE");
  ASSERT_TRUE(first > 0 && second > 0);
  EXPECT_EQ(0, ExitStatus(first));
  EXPECT_EQ(0, ExitStatus(second));
  EXPECT_FALSE(ReadFile(scratch / "dump0").empty());
  EXPECT_EQ(ReadFile(scratch / "dump0"), ReadFile(scratch / "dump1"));
}

}  // namespace
