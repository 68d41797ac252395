// UtilityApp: the application services of the library. An instance holds
// no data: every member is static, and so is every piece of state.
//
//   ZnString const log = UtilityApp::StartupDir() ^ (UtilityApp::AppName() + ".log");
//
// The identity of the process (its executable's name and folder) is filled
// once by the library's start; before it both texts are empty. Paths are in
// the library's form, with `\` separators.
#ifndef ZNUTIL_APPLICATION_UTILITYAPP_H
#define ZNUTIL_APPLICATION_UTILITYAPP_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/text/ZnString.h>

namespace znutil {
namespace detail {
class IdentityStart;
}  // namespace detail
}  // namespace znutil

class ZnBinary;
class ZnStringList;

/// Starts the library: identity, the configuration manager with both files
/// read, the process list and, unless `noUserInterface`, the logger (with
/// `logWindowTitle` suggested when it is not empty). Only the first call
/// between two stops does anything; the arguments of later calls are ignored.
/// Always true.
ZNUTIL_API bool InitializeUtilityLibrary(ZnString const &logWindowTitle, ZnString const &configFilePath,
                                         bool noUserInterface);
/// Stops the logger, then the configuration (both files flushed); no library
/// thread runs afterwards. Nothing without a start. Always true.
ZNUTIL_API bool ShutdownUtilityLibrary();

class ZNUTIL_API UtilityApp {
 public:
  UtilityApp() {}
  // Profile (the application's file) and global (the computer's file)
  // settings. A read gives the default on any failure, a wrong type
  // included; a write changes memory and is false only when the library is
  // not started. Bools are stored as the integers 1 and 0.

  bool GetProfileBool(ZnString const &section, ZnString const &entry, bool byDefault) const;
  int GetProfileIntA(ZnString const &section, ZnString const &entry, int byDefault) const;
  ZnString GetProfileStringA(ZnString const &section, ZnString const &entry, ZnString const &byDefault) const;
  float GetProfileFloat(ZnString const &section, ZnString const &entry, float byDefault) const;
  /// True with `result` set, or false with `result` untouched.
  bool GetProfileBinary(ZnString const &section, ZnString const &entry, ZnBinary *result) const;
  bool WriteProfileBool(ZnString const &section, ZnString const &entry, bool value) const;
  bool WriteProfileInt(ZnString const &section, ZnString const &entry, int value) const;
  bool WriteProfileStringA(ZnString const &section, ZnString const &entry, ZnString const &value) const;
  bool WriteProfileFloat(ZnString const &section, ZnString const &entry, float value) const;
  bool WriteProfileBinary(ZnString const &section, ZnString const &entry, ZnBinary const &value) const;

  bool GetGlobalBool(ZnString const &section, ZnString const &entry, bool byDefault) const;
  int GetGlobalInt(ZnString const &section, ZnString const &entry, int byDefault) const;
  ZnString GetGlobalString(ZnString const &section, ZnString const &entry, ZnString const &byDefault) const;
  float GetGlobalFloat(ZnString const &section, ZnString const &entry, float byDefault) const;
  /// True with `result` set, or false with `result` untouched.
  bool GetGlobalBinary(ZnString const &section, ZnString const &entry, ZnBinary *result) const;
  bool WriteGlobalBool(ZnString const &section, ZnString const &entry, bool value) const;
  bool WriteGlobalInt(ZnString const &section, ZnString const &entry, int value) const;
  bool WriteGlobalString(ZnString const &section, ZnString const &entry, ZnString const &value) const;
  bool WriteGlobalFloat(ZnString const &section, ZnString const &entry, float value) const;
  bool WriteGlobalBinary(ZnString const &section, ZnString const &entry, ZnBinary const &value) const;

  /// Writes both files now, on the calling thread, instead of on the
  /// manager's next turn.
  void Flush() const;

  // Application identity.

  /// The running executable's base name, with no folder and no extension.
  static ZnString const &AppName();
  /// The running executable's folder, with no trailing separator.
  static ZnString const &StartupDir();
  /// This library's module handle, set when the library is loaded.
  static HINSTANCE LibInstance();

  // Path expansion.

  /// The path with its %TOKEN% marks expanded and its "." and ".." parts
  /// folded. Tokens match in any case: APPNAME, STARTUPDIR, PLUGINDIR,
  /// APPVERSION ("Tesserae_2.13") and HOME come first, in that order, then
  /// the names of SetPath. An unknown or empty token gives nothing, and a
  /// `%` has no escape. A mark that is never closed cuts the rest of the
  /// path, and the relative parts are then kept (deliberate).
  static ZnString ParsePath(ZnString const &path);
  /// Defines or changes the token `name` (any case) as `path`; an empty
  /// path deletes it. A name that a built-in token has is stored but never
  /// used; an empty name is ignored. Not thread-safe: call it at start-up.
  static void SetPath(ZnString const &name, ZnString const &path);

  // Plug-in search path.

  /// Fills `list` with the folders in which to look for plug-ins, each
  /// through ParsePath; true when there is at least one. The sources are
  /// tried in the order of the variable PLUGINS_ORDER (words "env", "reg",
  /// "dir", separated by ","; default env,reg,dir) until one has text:
  /// env is the variable PLUGINS, reg the entry PLUGINS of section PATHS
  /// of the profile, then of the global file, dir the folder PLUGINS under
  /// the start-up directory. Items are separated by ";"; empty ones are
  /// dropped. Bad words are logged and skipped. False for a null `list`.
  static bool PluginPath(ZnStringList *list);
  /// The first folder of PluginPath, or empty when there is none. Inside a
  /// plug-in path, %PLUGINDIR% expands to nothing.
  static ZnString PluginDirectory();
  /// From now on PluginPath gives `path` (split at ";") and consults no
  /// other source. Nothing clears the override.
  static void SetPluginDirectory(ZnString const &path);

  // Per-thread OLE set-up.

  /// The platform's OleInitialize result on the thread's first call; 1 on
  /// every later call of the thread, even after OleUninitialize: a latch,
  /// deliberately not a count.
  static long OleInitialize();
  /// The platform's OleUninitialize, on a thread of the library's (one
  /// GetThread finds) that has called OleInitialize; every call reaches
  /// the platform. Also runs when such a thread ends.
  static void OleUninitialize();

 private:
  // Tests run the start-up steps of the identity through this class.
  friend class UtilityAppTestAccess;
  // The library's start and its own programs run the identity steps
  // through this one.
  friend class znutil::detail::IdentityStart;

  /// Fills fsAppName from the executable's path.
  static void InitAppName();
  /// Fills fsProgramStartupDirectory from the executable's path.
  static void InitStartupDirectory();

  static ZnString fsAppName;
  static ZnString fsProgramStartupDirectory;
  static HINSTANCE hLibInstance;
  static ZnString fsLastSuccessfulPluginDir;
  static bool bOverrideOnPluginPath;
  static unsigned long udwMemoryUsage;
};

#endif  // ZNUTIL_APPLICATION_UTILITYAPP_H
