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

class ZNUTIL_API UtilityApp {
 public:
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
  /// The first plug-in directory; empty for now.
  static ZnString PluginDirectory();

 private:
  // Tests run the start-up steps of the identity through this class.
  friend class UtilityAppTestAccess;
  // The library's own programs run the identity steps through this one.
  friend class znutil::detail::IdentityStart;

  /// Fills fsAppName from the executable's path.
  static void InitAppName();
  /// Fills fsProgramStartupDirectory from the executable's path.
  static void InitStartupDirectory();

  static ZnString fsAppName;
  static ZnString fsProgramStartupDirectory;
  static HINSTANCE hLibInstance;
  static unsigned long udwMemoryUsage;
};

#endif  // ZNUTIL_APPLICATION_UTILITYAPP_H
