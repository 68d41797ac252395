// The identity steps of the library's start, for the library's own
// programs: fills UtilityApp::AppName and UtilityApp::StartupDir from the
// running executable.
#ifndef ZNUTIL_APPLICATION_INTERNAL_IDENTITYSTART_H
#define ZNUTIL_APPLICATION_INTERNAL_IDENTITYSTART_H

#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

namespace znutil {
namespace detail {

class ZNUTIL_API IdentityStart {
 public:
  /// InitAppName, then InitStartupDirectory.
  static void Run();
  /// Copies of AppName and StartupDir that share nothing, taken while no
  /// start writes them: for the library's own threads.
  static void Read(ZnString *name, ZnString *folder);
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_APPLICATION_INTERNAL_IDENTITYSTART_H
