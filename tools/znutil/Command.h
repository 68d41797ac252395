// The commands of the znutil tool. Each command is a function that takes
// the arguments after its name and returns the exit status; main.cpp lists
// them. To add a command, write its function in a file of its own and add a
// row to the table in main.cpp.
#ifndef ZNUTIL_TOOLS_ZNUTIL_COMMAND_H
#define ZNUTIL_TOOLS_ZNUTIL_COMMAND_H

#include <string>
#include <vector>

namespace znutil_tool {

using Arguments = std::vector<std::string>;

struct Command {
  char const *name;
  char const *summary;  ///< one line for the tool's --help
  int (*run)(Arguments const &arguments);
};

/// Exit status of a usage error or a failure, as grep has it.
constexpr int kExitTrouble = 2;

/// Prints "znutil COMMAND: message" on standard error and returns kExitTrouble.
int Complain(char const *command, std::string const &message);

int RunCfg(Arguments const &arguments);
int RunEnv(Arguments const &arguments);
int RunGrep(Arguments const &arguments);
int RunPath(Arguments const &arguments);
int RunPs(Arguments const &arguments);
int RunReg(Arguments const &arguments);
int RunVersion(Arguments const &arguments);

}  // namespace znutil_tool

#endif  // ZNUTIL_TOOLS_ZNUTIL_COMMAND_H
