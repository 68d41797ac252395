// znutil path: the library's path expansion, search and arithmetic, with
// this tool as the application.
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include <znutil/application/UtilityApp.h>
#include <znutil/application/ZnPathSearch.h>
#include <znutil/application/internal/IdentityStart.h>
#include <znutil/system/ZnDirectory.h>
#include <znutil/system/ZnPathFunctions.h>

#include "Command.h"

namespace {

using namespace znutil_tool;

char const kUsage[] =
    "Usage: znutil path expand [--set NAME=PATH]... [--native] TEXT\n"
    "       znutil path search [--native] FILE DIRS\n"
    "       znutil path relative [--native] FROM TO\n"
    "       znutil path absolute [--native] BASE PATH\n"
    "Paths are in the library's form: `\\` separates parts in results, `/` is\n"
    "accepted too, and a drive such as C: is kept.\n"
    "  expand    expands the %TOKEN% marks of TEXT (any case) and folds its . and ..\n"
    "            parts. This tool is the application: %APPNAME% is znutil,\n"
    "            %STARTUPDIR% the tool's folder; %HOME% is $HOME, %APPVERSION% is\n"
    "            Tesserae_2.13, %PLUGINDIR% the first folder of $PLUGINS, else\n"
    "            the PLUGINS folder of the tool's folder (PLUGINS_ORDER may change\n"
    "            the order). Unknown tokens give nothing; an unclosed % cuts the\n"
    "            rest and leaves the . and .. parts.\n"
    "  search    prints FILE if it can be read as it stands, else the first\n"
    "            readable FILE name (its folder dropped) in the folders of DIRS,\n"
    "            separated by ';', in order.\n"
    "  relative  the way from FROM to TO, in lower case; relative ones are taken\n"
    "            from the tool's folder.\n"
    "  absolute  PATH resolved against BASE as text (only leading .. parts climb).\n"
    "  --set NAME=PATH  defines the token %NAME% for expand; may be repeated\n"
    "  --native         prints the system's form (/ separators, drive dropped)\n"
    "  --help           print this help\n"
    "Exit status: 0 on success, 1 when search finds nothing, 2 on bad usage.\n";

struct Action {
  char const *name;
  std::size_t operands;
  ZnString (*run)(std::vector<std::string> const &operands);
};

ZnString Expand(std::vector<std::string> const &operands) { return UtilityApp::ParsePath(operands[0].c_str()); }

ZnString Search(std::vector<std::string> const &operands) {
  return ZnPathSearch(operands[0].c_str(), operands[1].c_str()).Search();
}

ZnString Relative(std::vector<std::string> const &operands) {
  return ZnDirectory::CreateRelativePath(operands[0].c_str(), operands[1].c_str());
}

ZnString Absolute(std::vector<std::string> const &operands) {
  return ZnDirectory::CreateAbsolutePath(operands[0].c_str(), operands[1].c_str());
}

Action const kActions[] = {
    {"expand", 1, Expand},
    {"search", 2, Search},
    {"relative", 2, Relative},
    {"absolute", 2, Absolute},
};

struct PathOptions {
  bool help = false, native = false;
  Action const *action = nullptr;
  std::vector<std::string> operands;
  std::vector<std::pair<std::string, std::string>> names;
};

std::string TryHelp(std::string const &message) { return message + " (try znutil path --help)"; }

// "NAME=PATH" with a non-empty name.
bool ParseName(std::string const &text, PathOptions *options) {
  std::size_t const equals = text.find('=');
  if (equals == 0 || equals == std::string::npos) return false;
  options->names.emplace_back(text.substr(0, equals), text.substr(equals + 1));
  return true;
}

// One argument after the action; false with `error` set on bad usage.
bool ParseArgument(std::vector<std::string> const &arguments, std::size_t *i, bool *optionsEnded,
                   PathOptions *options, std::string *error) {
  std::string const &argument = arguments[*i];
  if (*optionsEnded || argument == "-" || argument[0] != '-') {
    options->operands.push_back(argument);
  } else if (argument == "--") {
    *optionsEnded = true;
  } else if (argument == "--help") {
    options->help = true;
  } else if (argument == "--native") {
    options->native = true;
  } else if (argument == "--set" || argument.compare(0, 6, "--set=") == 0) {
    bool const joined = argument.size() > 5;
    if (!joined && *i + 1 == arguments.size()) return *error = TryHelp("--set needs NAME=PATH"), false;
    std::string const value = joined ? argument.substr(6) : arguments[++*i];
    if (!ParseName(value, options)) return *error = TryHelp("bad --set '" + value + "' (expected NAME=PATH)"), false;
  } else {
    return *error = TryHelp("unknown option '" + argument + "'"), false;
  }
  return true;
}

Action const *FindAction(std::string const &name) {
  for (Action const &action : kActions)
    if (name == action.name) return &action;
  return nullptr;
}

bool ParseOptions(std::vector<std::string> const &arguments, PathOptions *options, std::string *error) {
  if (arguments.empty()) return *error = TryHelp("missing ACTION"), false;
  std::size_t first = 0;
  if (arguments[0] != "--help" && (options->action = FindAction(arguments[first++])) == nullptr)
    return *error = TryHelp("unknown action '" + arguments[0] + "'"), false;
  bool optionsEnded = false;
  for (std::size_t i = first; i < arguments.size(); ++i)
    if (!ParseArgument(arguments, &i, &optionsEnded, options, error)) return false;
  if (options->help) return true;
  Action const &action = *options->action;
  if (!options->names.empty() && action.run != Expand) return *error = TryHelp("--set is for expand only"), false;
  if (options->operands.size() != action.operands)
    return *error = TryHelp(std::string(action.name) + (action.operands == 1 ? " takes one TEXT" : " takes two paths")),
           false;
  return true;
}

}  // namespace

namespace znutil_tool {

int RunPath(Arguments const &arguments) {
  PathOptions options;
  std::string error;
  if (!ParseOptions(arguments, &options, &error)) return Complain("path", error);
  if (options.help) {
    std::fputs(kUsage, stdout);
    return 0;
  }
  // The identity steps of the library's start: %APPNAME%, %STARTUPDIR% and
  // relative paths then name this tool.
  znutil::detail::IdentityStart::Run();
  for (auto const &[name, path] : options.names) UtilityApp::SetPath(name.c_str(), path.c_str());
  ZnString const result = options.action->run(options.operands);
  if (options.action->run == Search && result == NULL_STRING) return 1;
  std::printf("%s\n", (options.native ? ZnToNativePath(result) : result).Chars());
  return 0;
}

}  // namespace znutil_tool
