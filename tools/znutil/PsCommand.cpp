// znutil ps: lists the running processes through ZnTaskList.
#include <cstdio>
#include <string>

#include <znutil/regex/ZnRegularExpression.h>
#include <znutil/system/ZnTaskList.h>

#include "Command.h"

namespace {

char const kUsage[] =
    "Usage: znutil ps [--name PATTERN]\n"
    "Prints the id and the name of every running process, one a line.\n"
    "  --name PATTERN  only the processes whose name PATTERN finds a match in\n"
    "                  (the regular expressions of znutil grep)\n"
    "  --help          print this help\n"
    "Exit status: 0 when a process was printed, 1 when none matched, 2 on a bad\n"
    "pattern or when the processes cannot be listed.\n";

}  // namespace

namespace znutil_tool {

int RunPs(Arguments const &arguments) {
  std::string pattern;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == "--help") {
      std::fputs(kUsage, stdout);
      return 0;
    }
    if (arguments[i] != "--name") {
      return Complain("ps", "unknown argument '" + arguments[i] + "' (try znutil ps --help)");
    }
    if (++i == arguments.size()) return Complain("ps", "--name needs a PATTERN");
    pattern = arguments[i];
  }
  ZnRegularExpression expression(pattern.c_str());
  if (!expression.Valid()) return Complain("ps", expression.CompileErrorString().Chars());

  ZnTaskList::Initialize();
  ZnTaskList tasks;
  tasks.Refresh();
  if (tasks.GetCount() == 0) return Complain("ps", "cannot list the processes");
  int printed = 0;
  for (ZnTask *task = tasks.First(); task != nullptr; task = tasks.Next()) {
    if (!pattern.empty() && !expression.Matches(task->ProcessName())) continue;
    std::printf("%7u %s\n", task->Id(), task->ProcessName().Chars());
    ++printed;
  }
  return printed > 0 ? 0 : 1;
}

}  // namespace znutil_tool
