// The commands of the znutil tool. Each command is one function in a file
// of its own, taking the arguments from its own name on (argv[0] is the
// command's name), and returning the exit status.
#ifndef ZNUTIL_TOOLS_COMMANDS_H
#define ZNUTIL_TOOLS_COMMANDS_H

/// Exit statuses shared by all commands.
enum ExitStatus { kExitOk = 0, kExitFailure = 1, kExitUsage = 2 };

/// znutil version: show or stamp the version resource of an executable.
int RunVersionCommand(int argc, char **argv);

#endif  // ZNUTIL_TOOLS_COMMANDS_H
