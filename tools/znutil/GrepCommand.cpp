// znutil grep: prints the lines of files (or standard input) in which a
// ZnRegularExpression finds a match.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include <znutil/regex/ZnRegularExpression.h>

#include "Command.h"

namespace {

using namespace znutil_tool;

char const kUsage[] =
    "Usage: znutil grep [-n] [-c] [-v] PATTERN [FILE...]\n"
    "       znutil grep [-n] [-c] [-v] --glob WILDCARD [FILE...]\n"
    "Prints each line of the files (standard input when none, or for -) in which\n"
    "PATTERN finds a match. Patterns group with ( ), alternate with |, repeat with\n"
    "* + ?, and compare letters outside [sets] without regard to case.\n"
    "  -n               put the line number in front of each line\n"
    "  -c               print only the number of selected lines\n"
    "  -v               select the lines that do not match\n"
    "  --glob WILDCARD  use a file-name wildcard (* ? .) instead of PATTERN\n"
    "  --help           print this help\n"
    "Exit status: 0 when a line was selected, 1 when none was, 2 on a bad\n"
    "pattern, an unreadable file or a line on which the search gave up (it is\n"
    "reported, and neither selected nor passed over).\n";

struct GrepOptions {
  bool lineNumbers = false;
  bool countOnly = false;
  bool invert = false;
  bool help = false;
  std::string glob;
  bool haveGlob = false;
  std::string pattern;
  Arguments files;
};

// Reads -n -c -v (also grouped, as -nv), --glob, --help and --; false with
// `error` set on a bad option.
bool ParseOptions(Arguments const &arguments, GrepOptions *options, std::string *error) {
  std::size_t i = 0;
  for (; i < arguments.size() && arguments[i].size() > 1 && arguments[i][0] == '-'; ++i) {
    std::string const &argument = arguments[i];
    if (argument == "--") {
      ++i;
      break;
    }
    if (argument == "--help") {
      options->help = true;
    } else if (argument == "--glob") {
      if (++i == arguments.size()) return *error = "--glob needs a WILDCARD", false;
      options->glob = arguments[i];
      options->haveGlob = true;
    } else if (argument.compare(0, 2, "--") == 0 || argument.find_first_not_of("ncv", 1) != std::string::npos) {
      return *error = "unknown option '" + argument + "' (try znutil grep --help)", false;
    } else {
      options->lineNumbers |= argument.find('n') != std::string::npos;
      options->countOnly |= argument.find('c') != std::string::npos;
      options->invert |= argument.find('v') != std::string::npos;
    }
  }
  if (options->help) return true;
  if (!options->haveGlob) {
    if (i == arguments.size()) return *error = "missing PATTERN (try znutil grep --help)", false;
    options->pattern = arguments[i++];
  }
  options->files.assign(arguments.begin() + static_cast<long>(i), arguments.end());
  return true;
}

class Grep {
 public:
  Grep(GrepOptions const &options, ZnRegularExpression &expression, bool showNames)
      : options_(options), expression_(expression), showNames_(showNames) {}

  /// Returns the number of selected lines.
  long Scan(std::istream &in, std::string const &name);
  /// Whether the search gave up on some line.
  bool GaveUp() const { return gaveUp_; }

 private:
  void Print(std::string const &name, long number, std::string const &line) const;

  GrepOptions const &options_;
  ZnRegularExpression &expression_;
  bool showNames_;
  bool gaveUp_ = false;
};

// A line is matched as a ZnString, so it ends at its first zero byte. A line
// on which the search gave up is reported: it is neither a match nor not one.
long Grep::Scan(std::istream &in, std::string const &name) {
  long selected = 0, number = 0;
  std::string line;
  while (std::getline(in, line)) {
    ++number;
    bool const matched = expression_.Matches(line.c_str());
    if (expression_.GaveUp()) {
      gaveUp_ = true;
      std::fflush(stdout);  // the report stands between the lines around it
      Complain("grep", name + ":" + std::to_string(number) + ": the pattern needs too much backtracking");
      continue;
    }
    if (matched == options_.invert) continue;
    ++selected;
    if (!options_.countOnly) Print(name, number, line);
  }
  if (options_.countOnly) {
    if (showNames_) std::printf("%s:", name.c_str());
    std::printf("%ld\n", selected);
  }
  return selected;
}

void Grep::Print(std::string const &name, long number, std::string const &line) const {
  if (showNames_) std::printf("%s:", name.c_str());
  if (options_.lineNumbers) std::printf("%ld:", number);
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::putchar('\n');
}

}  // namespace

namespace znutil_tool {

int RunGrep(Arguments const &arguments) {
  GrepOptions options;
  std::string error;
  if (!ParseOptions(arguments, &options, &error)) return Complain("grep", error);
  if (options.help) {
    std::fputs(kUsage, stdout);
    return 0;
  }
  ZnString const pattern =
      options.haveGlob ? ZnRegularExpression::DosToRegEx(options.glob.c_str()) : ZnString(options.pattern.c_str());
  ZnRegularExpression expression(pattern);
  if (!expression.Valid()) {
    return Complain("grep", std::string(static_cast<char const *>(expression.CompileErrorString())));
  }
  expression.Optimize();

  std::ios::sync_with_stdio(false);  // standard input is read through std::cin alone
  if (options.files.empty()) options.files.push_back("-");
  Grep grep(options, expression, options.files.size() > 1);
  long selected = 0;
  bool trouble = false;
  for (std::string const &file : options.files) {
    if (file == "-") {
      selected += grep.Scan(std::cin, "(standard input)");
      continue;
    }
    // A folder opens as a stream that reads nothing, which would pass for
    // a file without the line sought.
    std::error_code ignored;
    errno = std::filesystem::is_directory(file, ignored) ? EISDIR : 0;
    std::ifstream in;
    if (errno == 0) in.open(file, std::ios::binary);
    if (!in.is_open()) {
      trouble = true;
      Complain("grep", file + ": " + std::strerror(errno));
      continue;
    }
    selected += grep.Scan(in, file);
  }
  std::fflush(stdout);
  return trouble || grep.GaveUp() ? kExitTrouble : selected > 0 ? 0 : 1;
}

}  // namespace znutil_tool
