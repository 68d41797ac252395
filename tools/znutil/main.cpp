// znutil: command-line tools over the znutil library.
//
//   znutil cfg get|set|list|check FILE ...
//   znutil grep [-n] [-c] [-v] PATTERN [FILE...]
//   znutil path expand|search|relative|absolute [--native] ...
//   znutil version [--set-file-version A.B.C.D] FILE
//   znutil ps [--name PATTERN]
//   znutil env NAME [VALUE]
//   znutil reg get|set ROOT KEY NAME [VALUE]
//   znutil COMMAND --help
#include <cstdio>
#include <cstring>

#include "Command.h"

namespace znutil_tool {

int Complain(char const *command, std::string const &message) {
  std::fprintf(stderr, "znutil%s%s: %s\n", command ? " " : "", command ? command : "", message.c_str());
  return kExitTrouble;
}

}  // namespace znutil_tool

namespace {

using namespace znutil_tool;

Command const kCommands[] = {
    {"cfg", "get, set, list or check values of a configuration file", RunCfg},
    {"grep", "print the lines that match a regular expression", RunGrep},
    {"path", "expand, search and resolve paths in the library's form", RunPath},
    {"version", "show or stamp the version resource of a Windows executable", RunVersion},
    {"ps", "list the running processes, or those whose name matches", RunPs},
    {"env", "print an environment variable, or show what setting it does", RunEnv},
    {"reg", "read or write a text value of the library's registry store", RunReg},
};

void PrintUsage(std::FILE *out) {
  std::fprintf(out, "Usage: znutil COMMAND [ARGUMENTS...]\n       znutil COMMAND --help\n\nCommands:\n");
  for (Command const &command : kCommands) std::fprintf(out, "  %-10s %s\n", command.name, command.summary);
}

}  // namespace

int main(int argc, char **argv) {
  if (argc < 2) {
    PrintUsage(stderr);
    return kExitTrouble;
  }
  if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) {
    PrintUsage(stdout);
    return 0;
  }
  for (Command const &command : kCommands) {
    if (std::strcmp(argv[1], command.name) == 0) return command.run(Arguments(argv + 2, argv + argc));
  }
  return Complain(nullptr, std::string("unknown command '") + argv[1] + "' (try znutil --help)");
}
