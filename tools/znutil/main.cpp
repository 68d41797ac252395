// znutil: the library's services from the command line.
//
//   znutil version app.exe
//   znutil version --set-file-version 2.1.0.5 app.exe
//
// The first argument names the command, and the rest goes to it.
#include <cstdio>
#include <cstring>

#include "Commands.h"

namespace {

struct Command {
  char const *name;
  char const *summary;
  int (*run)(int argc, char **argv);
};

// One line per command.
Command const kCommands[] = {
    {"version", "show or stamp the version resource of a Windows executable", RunVersionCommand},
};

void PrintUsage() {
  std::printf(
      "usage: znutil COMMAND [ARGUMENTS...]\n"
      "       znutil COMMAND --help\n\n"
      "commands:\n");
  for (Command const &command : kCommands) std::printf("  %-10s %s\n", command.name, command.summary);
}

bool IsHelp(char const *argument) {
  return std::strcmp(argument, "--help") == 0 || std::strcmp(argument, "-h") == 0 || std::strcmp(argument, "help") == 0;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc < 2) {
    std::fprintf(stderr, "znutil: no command given (see 'znutil --help')\n");
    return kExitUsage;
  }
  if (IsHelp(argv[1])) {
    PrintUsage();
    return kExitOk;
  }
  for (Command const &command : kCommands)
    if (std::strcmp(argv[1], command.name) == 0) return command.run(argc - 1, argv + 1);
  std::fprintf(stderr, "znutil: unknown command '%s' (see 'znutil --help')\n", argv[1]);
  return kExitUsage;
}
