// Until the settings keep them: no saved flags, and the start-up folder.
#include <znutil/logging/internal/LoggerSettings.h>

#include <znutil/application/UtilityApp.h>

namespace znutil {
namespace detail {

int LoadSavedLoggerFlags() { return 0; }

void SaveLoggerFlags(int) {}

// A copy of its own: the logger thread reads it while others may copy the original.
ZnString LoggerDirectory() { return ZnString(UtilityApp::StartupDir().Chars()); }

}  // namespace detail
}  // namespace znutil
