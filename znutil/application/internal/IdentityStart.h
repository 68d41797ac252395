// The identity steps of the library's start, for the library's own
// programs: fills UtilityApp::AppName and UtilityApp::StartupDir from the
// running executable.
#ifndef ZNUTIL_APPLICATION_INTERNAL_IDENTITYSTART_H
#define ZNUTIL_APPLICATION_INTERNAL_IDENTITYSTART_H

#include <znutil/platform/Export.h>

namespace znutil {
namespace detail {

class ZNUTIL_API IdentityStart {
 public:
  /// InitAppName, then InitStartupDirectory.
  static void Run();
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_APPLICATION_INTERNAL_IDENTITYSTART_H
