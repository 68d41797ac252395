// UtilityApp: where to look for plug-ins. The list comes from the first
// source, in the order that PLUGINS_ORDER gives, that has any text: the
// settings ("reg"), the environment ("env") or the folder PLUGINS under the
// start-up directory ("dir"); SetPluginDirectory overrides them all.
#include <znutil/application/UtilityApp.h>

#include <algorithm>

#include <znutil/application/ZnEnvVariable.h>
#include <znutil/logging/ZnLogger.h>
#include <znutil/platform/ThreadLocal.h>
#include <znutil/text/ZnStringList.h>

// Read by any thread that asks for the plug-in path: it is stored and read
// as characters, never shared, since string counts are plain.
ZnString UtilityApp::fsLastSuccessfulPluginDir;
bool UtilityApp::bOverrideOnPluginPath = false;

namespace {

char const fsPluginsName[] = "PLUGINS";
char const fsPluginsOrderName[] = "PLUGINS_ORDER";

enum PluginSource { kNoSource = 0, kSettingsSource = 1, kEnvironmentSource = 2, kDirectorySource = 3 };
constexpr int kSourceSlots = 4;

// True while this thread expands the items of a plug-in path: %PLUGINDIR%
// inside one would ask for the plug-in path again, without end.
ZNUTIL_THREAD_LOCAL bool tExpandingPluginPath = false;

// Marks the calling thread as expanding a plug-in path for one scope.
class ExpandingPluginPath {
 public:
  ExpandingPluginPath() { tExpandingPluginPath = true; }
  ~ExpandingPluginPath() { tExpandingPluginPath = false; }
  ExpandingPluginPath(ExpandingPluginPath const &) = delete;
  ExpandingPluginPath &operator=(ExpandingPluginPath const &) = delete;
};

int SourceOfWord(ZnString const &word) {
  if (word.CaseCompare("env") == 0) return kEnvironmentSource;
  if (word.CaseCompare("reg") == 0) return kSettingsSource;
  if (word.CaseCompare("dir") == 0) return kDirectorySource;
  return kNoSource;
}

// The sources in the order of PLUGINS_ORDER, or env, reg, dir without it.
// A bad word is logged (with the whole value, once per bad word) and
// skipped; words after the fourth good one are ignored.
void PluginSourceOrder(int (&order)[kSourceSlots]) {
  int const byDefault[kSourceSlots] = {kEnvironmentSource, kSettingsSource, kDirectorySource, kNoSource};
  std::copy(byDefault, byDefault + kSourceSlots, order);
  ZnString value;
  if (!value.GetVariable(fsPluginsOrderName)) return;
  ZnStringList words;
  value.Tokenize(",", words);
  int used = 0;
  ZnListContext context;
  for (ZnString *word = words.First(context); word != nullptr; word = words.Next(context)) {
    int const source = SourceOfWord(*word);
    if (source == kNoSource) {
      ZnString message(fsPluginsOrderName);
      message << " is not formatted correctly.\n" << "The value given was '" << value << "'";
      ZnLogger::Log(ZnLogger::kError, "UtilityApp", "Plugin Loader", message);
    } else if (used < kSourceSlots) {
      order[used++] = source;
    }
  }
  std::fill(order + used, order + kSourceSlots, int(kNoSource));
}

ZnString PluginPathText(int source) {
  UtilityApp const app;
  switch (source) {
    case kSettingsSource: {
      ZnString const profile = app.GetProfileStringA("PATHS", fsPluginsName, NULL_STRING);
      return profile != NULL_STRING ? profile : app.GetGlobalString("PATHS", fsPluginsName, NULL_STRING);
    }
    case kEnvironmentSource:
      return ZnEnvVariable(fsPluginsName).Get();
    case kDirectorySource:
      return ZnString(UtilityApp::StartupDir().Chars()) << "\\" << fsPluginsName;
    default:
      return ZnString();
  }
}

}  // namespace

bool UtilityApp::PluginPath(ZnStringList *list) {
  if (list == nullptr) return false;
  ZnString text;
  if (bOverrideOnPluginPath) {
    text = fsLastSuccessfulPluginDir.Chars();
  } else {
    int order[kSourceSlots];
    PluginSourceOrder(order);
    for (int slot = 0; slot < kSourceSlots && text == NULL_STRING; ++slot) text = PluginPathText(order[slot]);
  }
  list->Clear();
  text.Tokenize(";", *list);
  ExpandingPluginPath const expanding;
  ZnListContext context;
  for (ZnString *item = list->First(context); item != nullptr;) {
    if (*item == NULL_STRING) {
      list->Delete(context);
      item = list->Current(context);
    } else {
      *item = ParsePath(*item);
      item = list->Next(context);
    }
  }
  ZnListContext first;
  return list->First(first) != nullptr;
}

ZnString UtilityApp::PluginDirectory() {
  if (tExpandingPluginPath) return ZnString();
  ZnStringList list;
  ZnListContext context;
  return PluginPath(&list) ? *list.First(context) : ZnString();
}

void UtilityApp::SetPluginDirectory(ZnString const &path) {
  fsLastSuccessfulPluginDir = path.Chars();
  bOverrideOnPluginPath = true;
}
