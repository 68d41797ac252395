// znutil env: reads an environment variable through ZnEnvVariable, or shows
// what setting it would make of it.
#include <cstdio>
#include <string>

#include <znutil/application/ZnEnvVariable.h>

#include "Command.h"

namespace {

char const kUsage[] =
    "Usage: znutil env NAME [VALUE]\n"
    "Prints the value of the environment variable NAME. With VALUE, sets NAME\n"
    "to VALUE in this command's own environment (an empty VALUE removes it)\n"
    "and prints NAME=VALUE as the variable now reads: a program cannot change\n"
    "the environment of the shell that started it.\n"
    "  --help  print this help\n"
    "Exit status: 0 when NAME has a value, 1 when it is unset or empty, 2 on a\n"
    "bad NAME or an unknown option.\n";

}  // namespace

namespace znutil_tool {

int RunEnv(Arguments const &arguments) {
  if (!arguments.empty() && arguments[0] == "--help") {
    std::fputs(kUsage, stdout);
    return 0;
  }
  if (arguments.empty() || arguments.size() > 2) {
    return Complain("env", "expected NAME [VALUE] (try znutil env --help)");
  }
  std::string const &name = arguments[0];
  if (name.size() > 1 && name[0] == '-')
    return Complain("env", "unknown option '" + name + "' (try znutil env --help)");
  if (name.empty() || name.find('=') != std::string::npos) return Complain("env", "bad variable name '" + name + "'");

  ZnEnvVariable variable(name.c_str());
  if (arguments.size() == 2) {
    variable.Set(arguments[1].c_str());
    variable.SetName(name.c_str());  // reads back what the environment now holds
    std::printf("%s=%s\n", name.c_str(), variable.Get().Chars());
  } else if (variable.Get() != NULL_STRING) {
    std::printf("%s\n", variable.Get().Chars());
  }
  return variable.Get() != NULL_STRING ? 0 : 1;
}

}  // namespace znutil_tool
