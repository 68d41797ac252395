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

class ZNUTIL_API UtilityApp {
 public:
  // Application identity.

  /// The running executable's base name, with no folder and no extension.
  static ZnString const &AppName();
  /// The running executable's folder, with no trailing separator.
  static ZnString const &StartupDir();
  /// This library's module handle, set when the library is loaded.
  static HINSTANCE LibInstance();

 private:
  // Tests run the start-up steps of the identity through this class.
  friend class UtilityAppTestAccess;

  /// Fills fsAppName from the executable's path.
  static void InitAppName();
  /// Fills fsProgramStartupDirectory from the executable's path.
  static void InitStartupDirectory();

  static ZnString fsAppName;
  static ZnString fsProgramStartupDirectory;
  static HINSTANCE hLibInstance;
};

#endif  // ZNUTIL_APPLICATION_UTILITYAPP_H
