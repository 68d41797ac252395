// A plug-in host: starts the library, finds the plug-ins its profile names
// along the plug-in path, runs each, undoes what they left in its history,
// unloads them and stops the library.
//
//   plugin_host [profile]
//
// Exits with 0 when every named plug-in ran.
#include <cstdio>
#include <string>
#include <vector>

#include <znutil/platform/Module.h>
#include <znutil/znutil.h>

#include "PluginInterface.h"

namespace {

using znutil::platform::FreeLibrary;
using znutil::platform::GetProcAddress;
using znutil::platform::LoadLibraryA;

// Said both to the log and to the console.
void Report(int type, ZnString const &text) {
  ZnLogger::Log(type, "Host", "Plugins", text);
  std::printf("%s\n", static_cast<char const *>(text));
}

// The plug-in folders as one ";"-separated list, as ZnPathSearch takes it.
ZnString PluginSearchPath() {
  ZnStringList folders;
  UtilityApp::PluginPath(&folders);
  ZnString joined;
  ZnListContext position;
  for (ZnString *folder = folders.First(position); folder != nullptr; folder = folders.Next(position)) {
    if (joined.Length() != 0) joined += ";";
    joined += *folder;
  }
  return joined;
}

// Loads and starts the plug-in `name`: its module, or null.
HMODULE RunPlugin(ZnString const &name, ZnString const &searchPath, ZnActionManager *history, int run) {
  ZnString const file = ZnPathSearch(name + ZnString(".so"), searchPath).Search();
  if (file.Length() == 0) {
    Report(ZnLogger::kWarning, name + ZnString(" is not on the plug-in path"));
    return nullptr;
  }
  std::string error;
  HMODULE const module = LoadLibraryA(file, &error);
  if (module == nullptr) {
    Report(ZnLogger::kError, name + ZnString(" does not load: ") + ZnString(error.c_str()));
    return nullptr;
  }
  auto *start = reinterpret_cast<PluginStartFunction *>(GetProcAddress(module, kPluginStartSymbol));
  if (start == nullptr) {
    Report(ZnLogger::kError, name + ZnString(" has no entry point"));
    FreeLibrary(module);
    return nullptr;
  }
  ZnString greeting;
  greeting.Format("welcome to run %d", run);
  PluginCall call{history, CopyToLibraryHeap(greeting)};
  char *reply = start(&call);
  if (reply != nullptr) {
    Report(ZnLogger::kInformation, name + ZnString(": ") + ZnString(reply));
    ZenoUtilFree(reply);
  }
  return module;
}

}  // namespace

int main(int argc, char **argv) {
  InitializeUtilityLibrary("Plug-in host", argc > 1 ? ZnFromNativePath(argv[1]) : ZnString(), false);
  UtilityApp const app;
  int const run = app.GetProfileIntA("Host", "Runs", 0) + 1;
  app.WriteProfileInt("Host", "Runs", run);

  ZnStringList names;
  app.GetProfileStringA("Host", "Plugins", "greeter;counter").Tokenize(ZnString(";"), names);
  ZnString const searchPath = PluginSearchPath();
  ZnActionManager history;
  std::vector<HMODULE> modules;
  ZnListContext position;
  for (ZnString *name = names.First(position); name != nullptr; name = names.Next(position)) {
    HMODULE const module = RunPlugin(*name, searchPath, &history, run);
    if (module != nullptr) modules.push_back(module);
  }

  // The actions' code lives in the plug-ins: undo and destroy them first.
  ZnString label;
  while (history.UndoLabel(label)) {
    history.Undo();
    Report(ZnLogger::kInformation, ZnString("undid ") + label);
  }
  history.Clear();
  for (HMODULE module : modules) FreeLibrary(module);

  ZnString summary;
  summary.Format("run %d: %d of %d plug-ins ran", run, static_cast<int>(modules.size()), names.GetCount());
  Report(ZnLogger::kInformation, summary);
  ShutdownUtilityLibrary();
  return static_cast<int>(modules.size()) == names.GetCount() ? 0 : 1;
}
