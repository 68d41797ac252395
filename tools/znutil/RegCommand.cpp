// znutil reg: reads and writes text values of the library's registry store
// through ZnRegVariable.
#include <cstdio>
#include <cstring>
#include <string>
#include <strings.h>

#include <znutil/application/ZnRegVariable.h>
#include <znutil/platform/WinTypes.h>

#include "Command.h"

namespace {

char const kUsage[] =
    "Usage: znutil reg get ROOT KEY NAME\n"
    "       znutil reg set ROOT KEY NAME VALUE\n"
    "Reads or writes the text value NAME of the registry key KEY (names\n"
    "separated by \\ or /) under ROOT: HKEY_CLASSES_ROOT (HKCR),\n"
    "HKEY_CURRENT_USER (HKCU), HKEY_LOCAL_MACHINE (HKLM) or HKEY_USERS (HKU).\n"
    "set creates the key and its parents. The store is the folder\n"
    "$ZNUTIL_REGISTRY_DIR, else $XDG_CONFIG_HOME/znutil/registry, else\n"
    "$HOME/.config/znutil/registry.\n"
    "  --help  print this help\n"
    "Exit status: 0 on success, 1 when get finds no text value, 2 on bad\n"
    "arguments or a value that cannot be written.\n";

struct Root {
  char const *name;
  char const *shortName;
  HKEY key;
};

Root const kRoots[] = {{"HKEY_CLASSES_ROOT", "HKCR", HKEY_CLASSES_ROOT},
                       {"HKEY_CURRENT_USER", "HKCU", HKEY_CURRENT_USER},
                       {"HKEY_LOCAL_MACHINE", "HKLM", HKEY_LOCAL_MACHINE},
                       {"HKEY_USERS", "HKU", HKEY_USERS}};

// The root named `name` (either form, any case), or null.
Root const *FindRoot(std::string const &name) {
  for (Root const &root : kRoots) {
    if (strcasecmp(name.c_str(), root.name) == 0 || strcasecmp(name.c_str(), root.shortName) == 0) return &root;
  }
  return nullptr;
}

}  // namespace

namespace znutil_tool {

int RunReg(Arguments const &arguments) {
  if (!arguments.empty() && arguments[0] == "--help") {
    std::fputs(kUsage, stdout);
    return 0;
  }
  bool const get = arguments.size() == 4 && arguments[0] == "get";
  bool const set = arguments.size() == 5 && arguments[0] == "set";
  if (!get && !set) {
    return Complain("reg", "expected get ROOT KEY NAME or set ROOT KEY NAME VALUE (try znutil reg --help)");
  }
  Root const *root = FindRoot(arguments[1]);
  if (root == nullptr) return Complain("reg", "unknown root '" + arguments[1] + "' (HKCR, HKCU, HKLM or HKU)");

  ZnRegVariable variable(root->key, arguments[2].c_str(), arguments[3].c_str());
  if (get) {
    if (variable.Get() == NULL_STRING) return 1;
    std::printf("%s\n", variable.Get().Chars());
    return 0;
  }
  variable.Set(arguments[4].c_str());
  if (ZnRegVariable(root->key, arguments[2].c_str(), arguments[3].c_str()).Get() != arguments[4].c_str()) {
    return Complain("reg", "cannot write " + std::string(root->name) + "\\" + arguments[2] + "\\" + arguments[3]);
  }
  return 0;
}

}  // namespace znutil_tool
