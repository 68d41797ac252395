// The process list: snapshots of /proc, with a child process of the test coming and going, and the task-name
// wildcard match.
#include <znutil/system/ZnTaskList.h>

#include <csignal>
#include <filesystem>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Eventually.h"
#include "ScratchDirectory.h"

extern char **environ;

namespace {

using znutil_test::ScratchDirectory;

// The name of the task with `id` in a fresh snapshot, or empty.
std::string NameOf(pid_t id) {
  ZnTaskList tasks;
  tasks.Refresh();
  for (ZnTask *task = tasks.First(); task != nullptr; task = tasks.Next()) {
    if (task->Id() == static_cast<unsigned int>(id)) return task->ProcessName().Chars();
  }
  return std::string();
}

// Polls until the snapshot shows `id` under `name` (empty: not at all).
bool Eventually(pid_t id, std::string const &name) {
  return znutil_test::Eventually([&] { return NameOf(id) == name; });
}

TEST(ZnTaskListTest, AFreshListIsEmptyAndASnapshotHoldsThisProcess) {
  ZnTaskList tasks;
  EXPECT_EQ(tasks.First(), nullptr);
  EXPECT_EQ(tasks.Next(), nullptr);
  ZnTaskList::Initialize();
  EXPECT_EQ(ZnTaskList::GetPid(), static_cast<unsigned int>(getpid()));
  tasks.Refresh();
  int count = 0;
  bool self = false;
  for (ZnTask *task = tasks.First(); task != nullptr; task = tasks.Next(), ++count) {
    self = self || (task->Id() == ZnTaskList::GetPid() && task->ProcessName() == "tasks_test");
  }
  EXPECT_TRUE(self);
  EXPECT_EQ(count, tasks.GetCount());
  EXPECT_EQ(tasks.Next(), nullptr);  // and stays at the end
  ZnTask copy(*tasks.First());
  tasks.Refresh();  // replaces every task: this process is there once
  int selves = 0;
  for (ZnTask *task = tasks.First(); task != nullptr; task = tasks.Next()) selves += task->Id() == ZnTaskList::GetPid();
  EXPECT_EQ(selves, 1);
  EXPECT_NE(copy.ProcessName(), NULL_STRING);
}

TEST(ZnTaskListTest, AChildAppearsUnderItsFullNameAndLeavesWhenItEnds) {
  // A name longer than the kernel's 15-byte `comm` comes from the executable.
  ScratchDirectory scratch;
  std::string const program = scratch / "a-rather-long-sleeper";
  std::filesystem::copy_file("/bin/sleep", program);
  char *const arguments[] = {const_cast<char *>(program.c_str()), const_cast<char *>("60"), nullptr};
  pid_t child = 0;
  if (posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ) != 0) {
    GTEST_SKIP() << "cannot run programs from " << scratch.Path();
  }
  EXPECT_TRUE(Eventually(child, "a-rather-long-sleeper"));
  std::filesystem::remove(program);  // the process keeps its name, with no removal mark
  EXPECT_EQ(NameOf(child), "a-rather-long-sleeper");
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_TRUE(Eventually(child, ""));
}

TEST(ZnTaskListTest, MatchTaskNameComparesTheTextInUpperCase) {
  struct {
    char const *text, *pattern;
    bool matches;
  } const cases[] = {
      {"abc", "A?C", true},           {"abc", "abc", false},           {"notepad.exe", "NOTE*", true},
      {"notepad.exe", "*.EXE", true}, {"notepad.exe", "*.COM", false}, {"", "*", true},
      {"", "", true},                 {"a", "", false},                {"", "?", false},
      {"ab", "A*B*", true},           {"b", "[A-C]", true},            {"d", "[A-CX]", false},
      {"x", "[A-CX]", true},          {"-", "[A-]", true},             {"b", "[ABC", false},
      {"", "[A]", false},             {"b", "[]B", false},             {"ab", "[A]B", true},
      {"abcabd", "*AB?", true},       {"aab", "*AB", true},            {"abcabd", "*AB[A-C]", false}};
  for (auto const &c : cases) EXPECT_EQ(MatchTaskName(c.text, c.pattern), c.matches) << c.text << " " << c.pattern;
  // Many stars over a long name: only the last star is retried, so this ends at once (retrying each star in
  // turn would take years).
  std::string const name(250, 'a');
  EXPECT_FALSE(MatchTaskName(name.c_str(), "*A*A*A*A*A*A*A*A*A*A*A*A*B"));
  EXPECT_TRUE(MatchTaskName(name.c_str(), "*A*A*A*A*A*A*A*A*A*A*A*A"));
  EXPECT_FALSE(MatchTaskName(nullptr, "*"));
  EXPECT_FALSE(MatchTaskName("abc", nullptr));
}

}  // namespace
