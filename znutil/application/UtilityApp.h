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

  /// Fills fsAppName from the executable's path.
  static void InitAppName();
  /// Fills fsProgramStartupDirectory from the executable's path.
  static void InitStartupDirectory();

  static ZnString fsAppName;
  static ZnString fsProgramStartupDirectory;
  static HINSTANCE hLibInstance;
};

#endif  // ZNUTIL_APPLICATION_UTILITYAPP_H
