// znutil cfg: reads, changes, lists and checks configuration files.
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <znutil/configuration/ZnCfgData.h>
#include <znutil/configuration/ZnCfgEntryList.h>
#include <znutil/configuration/ZnCfgFile.h>
#include <znutil/configuration/ZnCfgFileParser.h>
#include <znutil/configuration/ZnCfgSectionList.h>
#include <znutil/containers/ZnListContext.h>

#include "Command.h"

// The parser hands its messages to the logger, and queues them while no
// logger runs, as in this tool; `check` takes them from the queue through
// the access class the parser grants.
class ZnCfgFileParserTestAccess {
 public:
  static int TakeMessage(ZnString *text) {
    ZnString source, category;
    return ZnCfgFileParser::TakeQueuedMessage(&source, &category, text);
  }
};

namespace {

using namespace znutil_tool;

char const kUsage[] =
    "Usage: znutil cfg get FILE SECTION ENTRY [--machine M]\n"
    "       znutil cfg set FILE SECTION ENTRY VALUE [--type text|integer|float|binary]\n"
    "       znutil cfg list FILE [SECTION]\n"
    "       znutil cfg check FILE\n"
    "Reads and changes ZNUTIL configuration files. Run 'znutil cfg ACTION --help'\n"
    "for one action.\n";

char const kGetUsage[] =
    "Usage: znutil cfg get FILE SECTION ENTRY [--machine M]\n"
    "Prints the value of ENTRY in SECTION of FILE, as the library reads it: the\n"
    "entry of machine M if there is one, else the entry for all machines.\n"
    "Binary values print as x01,x02. Names are not case-sensitive.\n"
    "  --machine M  the machine to look up (default: all)\n"
    "Exit status: 0 when found, 1 when missing, 2 on bad usage or a file that\n"
    "cannot be read or has errors.\n";

char const kSetUsage[] =
    "Usage: znutil cfg set FILE SECTION ENTRY VALUE [--type text|integer|float|binary]\n"
    "Sets one value in FILE (made if missing) and writes the file whole in the\n"
    "library's form; comments and the original layout are not kept. The entry\n"
    "for all machines is set; entries of single machines are left alone.\n"
    "Binary values are given as x01,x02.\n"
    "  --type T  the value's type (default: text)\n"
    "Exit status: 0 when written, 2 on bad usage, a bad value, or a file that\n"
    "has errors or cannot be written.\n";

char const kListUsage[] =
    "Usage: znutil cfg list FILE [SECTION]\n"
    "Prints every entry of FILE, or of SECTION only, one a line:\n"
    "SECTION, ENTRY, MACHINE, TYPE and VALUE separated by tabs, text values\n"
    "quoted as the file writes them. A section with no entries prints its\n"
    "name alone.\n"
    "Exit status: 0, or 2 on bad usage or a file that cannot be read or has\n"
    "errors.\n";

char const kCheckUsage[] =
    "Usage: znutil cfg check FILE\n"
    "Parses FILE and prints the parser's messages.\n"
    "Exit status: 0 when FILE parses, 1 when it has errors, 2 on bad usage.\n";

constexpr int kExitMissing = 1;
// Levels of the parser's messages, as the logger takes them.
constexpr int kWarningLevel = 1;
constexpr int kErrorLevel = 2;

struct Action {
  std::string name;
  std::vector<std::string> operands;
  std::string machine = "all";
  std::string type = "text";
};

std::string Quoted(std::string const &text) { return "'" + text + "'"; }

std::string TryHelp(std::string const &action) {
  return " (try znutil cfg " + (action.empty() ? std::string() : action + " ") + "--help)";
}

char const *UsageOf(std::string const &action) {
  if (action == "get") return kGetUsage;
  if (action == "set") return kSetUsage;
  if (action == "list") return kListUsage;
  if (action == "check") return kCheckUsage;
  return nullptr;
}

bool Fail(std::string *error, std::string const &message) {
  *error = message;
  return false;
}

// The options and operands after the action's name; false with `error`.
bool ParseAction(Arguments const &arguments, Action *action, bool *help, std::string *error) {
  action->name = arguments[0];
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    std::string const &argument = arguments[i];
    bool const takesMachine = argument == "--machine" && action->name == "get";
    bool const takesType = argument == "--type" && action->name == "set";
    if (argument == "--help") {
      *help = true;
    } else if (takesMachine || takesType) {
      if (i + 1 == arguments.size()) return Fail(error, argument + " needs a value" + TryHelp(action->name));
      (takesMachine ? action->machine : action->type) = arguments[++i];
    } else if (argument.size() > 1 && argument[0] == '-' && argument != "--" &&
               !std::isdigit(static_cast<unsigned char>(argument[1])) && argument[1] != '.') {
      return Fail(error, "unknown option " + Quoted(argument) + TryHelp(action->name));
    } else if (argument != "--") {
      action->operands.push_back(argument);
    }
  }
  return true;
}

bool CheckOperandCount(Action const &action, std::size_t least, std::size_t most, std::string *error) {
  std::size_t const count = action.operands.size();
  if (count < least) return Fail(error, "missing operands" + TryHelp(action.name));
  if (count > most) return Fail(error, "too many operands" + TryHelp(action.name));
  return true;
}

// True when the file holds a zero byte, which nothing that writes a
// configuration file puts there. The parser stops at one, so such a file
// would read as cut short and be overwritten whole by `set`.
bool HoldsZeroByte(std::string const &path) {
  std::ifstream in(path, std::ios::binary);
  return std::find(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>(), '\0') !=
         std::istreambuf_iterator<char>();
}

// A file to read: it must be there and be a text file.
bool CheckReadable(std::string const &path, std::string *error) {
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return Fail(error, "no such file " + Quoted(path));
  if (std::filesystem::is_directory(path, ignored)) return Fail(error, Quoted(path) + " is a folder");
  if (HoldsZeroByte(path)) return Fail(error, Quoted(path) + " is not a text file (it holds a zero byte)");
  return true;
}

// The parsed tree of a file, or null with `error` set.
std::unique_ptr<ZnCfgSectionList> ParseFile(std::string const &path, std::string *error) {
  if (!CheckReadable(path, error)) return nullptr;
  std::unique_ptr<ZnCfgSectionList> sections(ZnCfgFileParser(path.c_str()).Parse());
  ZnCfgFileParser::PurgeErrorMessages();
  if (sections == nullptr) *error = Quoted(path) + " has errors (see znutil cfg check " + path + ")";
  return sections;
}

std::string TypeName(ZnCfgData const &data) {
  std::string const tag = data.FormatType().Chars();
  return tag.substr(1, tag.size() - 2);  // without the parentheses
}

// A value on one line as `get` prints it: text as it is, numbers plain
// (floats with every digit they need), bytes as x01,x02.
std::string PlainValue(ZnCfgData const &data) {
  ZnBinary bytes;
  float number;
  ZnString text;
  if (data.GetBinary(&bytes)) return bytes.Dump(false).Chars();
  if (data.GetFloat(&number)) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.9g", static_cast<double>(number));
    return digits;
  }
  data.ConvertToText(&text);
  return text.Chars();
}

// As `list` prints it: text quoted and escaped as the file writes it.
std::string ListedValue(ZnCfgData const &data) {
  ZnString text;
  return data.GetText(&text) ? data.FormatValue().Chars() : PlainValue(data);
}

void PrintSection(ZnCfgSection const &section) {
  ZnCfgEntryList *entries = section.Entries();
  ZnListContext position;
  ZnCfgEntry *entry = entries != nullptr ? entries->First(position) : nullptr;
  if (entry == nullptr) std::printf("%s\n", section.Name().Chars());
  for (; entry != nullptr; entry = entries->Next(position)) {
    ZnCfgData const *data = entry->Data();
    std::printf("%s\t%s\t%s\t%s\t%s\n", section.Name().Chars(), entry->Name().Chars(), entry->Machine().Chars(),
                data != nullptr ? TypeName(*data).c_str() : "", data != nullptr ? ListedValue(*data).c_str() : "");
  }
}

int RunList(Action const &action) {
  std::string error;
  if (!CheckOperandCount(action, 1, 2, &error)) return Complain("cfg", error);
  std::unique_ptr<ZnCfgSectionList> sections = ParseFile(action.operands[0], &error);
  if (sections == nullptr) return Complain("cfg", error);
  if (action.operands.size() == 2) {
    ZnCfgSection const *section = sections->FindSection(action.operands[1].c_str());
    if (section == nullptr) return Complain("cfg", "no section " + Quoted(action.operands[1]));
    PrintSection(*section);
    return 0;
  }
  ZnListContext position;
  for (ZnCfgSection *section = sections->First(position); section != nullptr; section = sections->Next(position))
    PrintSection(*section);
  return 0;
}

// A file object loaded from `path`; false with `error` when it has errors.
bool LoadFile(ZnCfgFile *file, std::string const &path, std::string *error) {
  if (ParseFile(path, error) == nullptr) return false;
  file->Refresh();
  return true;
}

// The entry of `machine`, else the one for all machines, as the library
// looks it up; null when there is none.
ZnCfgEntry const *LookUp(ZnCfgSectionList const &sections, Action const &action) {
  ZnCfgSection const *section = sections.FindSection(action.operands[1].c_str());
  ZnCfgEntryList const *entries = section != nullptr ? section->Entries() : nullptr;
  if (entries == nullptr) return nullptr;
  ZnString const name(action.operands[2].c_str());
  ZnCfgEntry const *entry = entries->FindEntry(name, action.machine.c_str());
  return entry != nullptr ? entry : entries->FindEntry(name, "all");
}

int RunGet(Action const &action) {
  std::string error;
  if (!CheckOperandCount(action, 3, 3, &error)) return Complain("cfg", error);
  std::unique_ptr<ZnCfgSectionList> sections = ParseFile(action.operands[0], &error);
  if (sections == nullptr) return Complain("cfg", error);
  ZnCfgEntry const *entry = LookUp(*sections, action);
  if (entry == nullptr || entry->Data() == nullptr) return kExitMissing;
  std::printf("%s\n", PlainValue(*entry->Data()).c_str());
  return 0;
}

bool ParseInteger(std::string const &text, int *value) {
  char *end = nullptr;
  errno = 0;
  long const number = std::strtol(text.c_str(), &end, 10);
  *value = static_cast<int>(number);
  return !text.empty() && *end == '\0' && errno == 0 && number >= INT32_MIN && number <= INT32_MAX &&
         !std::isspace(static_cast<unsigned char>(text[0]));
}

bool ParseFloat(std::string const &text, float *value) {
  char *end = nullptr;
  errno = 0;
  *value = std::strtof(text.c_str(), &end);
  return !text.empty() && *end == '\0' && errno == 0 && std::isfinite(*value) &&
         !std::isspace(static_cast<unsigned char>(text[0]));
}

// "x01,x02": one byte or more, each "x" and one or two hexadecimal digits.
bool ParseBytes(std::string const &text, ZnBinary *value) {
  std::string bytes;
  for (std::size_t at = 0; at <= text.size();) {
    std::size_t const comma = std::min(text.find(',', at), text.size());
    std::string const item = text.substr(at, comma - at);
    if (item.size() < 2 || item.size() > 3 || (item[0] != 'x' && item[0] != 'X') ||
        item.find_first_not_of("0123456789abcdefABCDEF", 1) != std::string::npos)
      return false;
    bytes += static_cast<char>(std::strtoul(item.c_str() + 1, nullptr, 16));
    at = comma + 1;
  }
  value->Store(reinterpret_cast<unsigned char const *>(bytes.data()), static_cast<ZnULong>(bytes.size()));
  return true;
}

// Text that comes back as it went out: the file form keeps printable
// characters and the escapes \b \t \n \r only.
bool SurvivesTheFile(std::string const &text) {
  for (unsigned char c : text) {
    if (!std::isprint(c) && c != '\b' && c != '\t' && c != '\n' && c != '\r') return false;
  }
  return true;
}

// A name is written without escapes: a quote, a backslash or a line end
// would break the file.
bool IsWritableName(std::string const &name) { return name.find_first_of("\"\\\r\n") == std::string::npos; }

bool SetValue(ZnCfgFile *file, Action const &action, std::string *error) {
  ZnString const section(action.operands[1].c_str()), entry(action.operands[2].c_str());
  std::string const &text = action.operands[3];
  int integer;
  float number;
  ZnBinary bytes;
  if (action.type == "text") {
    if (!SurvivesTheFile(text)) return Fail(error, "text values hold printable ASCII, tabs and line ends only");
    return file->SetTextEntry(section, entry, "all", text.c_str()) == ZnCfgFile::CfgOk;
  }
  if (action.type == "integer") {
    if (!ParseInteger(text, &integer)) return Fail(error, "bad integer " + Quoted(text));
    return file->SetIntegerEntry(section, entry, "all", integer) == ZnCfgFile::CfgOk;
  }
  if (action.type == "float") {
    if (!ParseFloat(text, &number)) return Fail(error, "bad float " + Quoted(text));
    return file->SetFloatEntry(section, entry, "all", number) == ZnCfgFile::CfgOk;
  }
  if (action.type == "binary") {
    if (!ParseBytes(text, &bytes)) return Fail(error, "bad binary value " + Quoted(text) + " (expected x01,x02)");
    return file->SetBinaryEntry(section, entry, "all", bytes) == ZnCfgFile::CfgOk;
  }
  return Fail(error, "unknown type " + Quoted(action.type) + " (expected text, integer, float or binary)");
}

int RunSet(Action const &action) {
  std::string error;
  if (!CheckOperandCount(action, 4, 4, &error)) return Complain("cfg", error);
  std::string const &path = action.operands[0];
  if (!IsWritableName(action.operands[1]) || !IsWritableName(action.operands[2]))
    return Complain("cfg", "names may not hold quotes, backslashes or line ends");
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) return Complain("cfg", Quoted(path) + " is a folder");
  ZnCfgFile file(path.c_str());
  bool const exists = std::filesystem::exists(path, ignored);
  if (exists && !LoadFile(&file, path, &error)) return Complain("cfg", error);
  if (!SetValue(&file, action, &error)) return Complain("cfg", error);
  file.Flush();
  // A flush that wrote leaves nothing newer to write; one that failed
  // still has it.
  if (file.Flush()) return Complain("cfg", "cannot write " + Quoted(path));
  return 0;
}

int RunCheck(Action const &action) {
  std::string error;
  if (!CheckOperandCount(action, 1, 1, &error)) return Complain("cfg", error);
  std::string const &path = action.operands[0];
  if (!CheckReadable(path, &error)) return Complain("cfg", error);
  std::unique_ptr<ZnCfgSectionList> sections(ZnCfgFileParser(path.c_str()).Parse());
  bool errors = sections == nullptr;
  ZnString text;
  for (int level; (level = ZnCfgFileParserTestAccess::TakeMessage(&text)) >= 0;) {
    errors = errors || level == kErrorLevel;
    std::printf("%s: %s\n", level == kErrorLevel ? "error" : level == kWarningLevel ? "warning" : "note", text.Chars());
  }
  if (errors) return kExitMissing;
  std::printf("%s: no errors\n", path.c_str());
  return 0;
}

}  // namespace

namespace znutil_tool {

int RunCfg(Arguments const &arguments) {
  if (arguments.empty()) return Complain("cfg", "missing ACTION" + TryHelp(""));
  if (arguments[0] == "--help") return std::fputs(kUsage, stdout), 0;
  char const *usage = UsageOf(arguments[0]);
  if (usage == nullptr) return Complain("cfg", "unknown action " + Quoted(arguments[0]) + TryHelp(""));
  Action action;
  bool help = false;
  std::string error;
  if (!ParseAction(arguments, &action, &help, &error)) return Complain("cfg", error);
  if (help) return std::fputs(usage, stdout), 0;
  if (action.name == "get") return RunGet(action);
  if (action.name == "set") return RunSet(action);
  if (action.name == "list") return RunList(action);
  return RunCheck(action);
}

}  // namespace znutil_tool
