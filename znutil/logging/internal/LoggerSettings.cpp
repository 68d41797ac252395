// The logger's flags live in the profile, section "Logger Options", entry
// "Flags"; the variable LOGDIR, when set, replaces the start-up folder as the
// first place of the log file.
#include <znutil/logging/internal/LoggerSettings.h>

#include <znutil/application/UtilityApp.h>

namespace znutil {
namespace detail {

namespace {

char const kSection[] = "Logger Options";
char const kEntry[] = "Flags";

}  // namespace

int LoadSavedLoggerFlags() { return UtilityApp().GetProfileIntA(kSection, kEntry, 0); }

void SaveLoggerFlags(int flags) { UtilityApp().WriteProfileInt(kSection, kEntry, flags); }

ZnString LoggerDirectory(ZnString const &startupFolder) {
  ZnString folder(startupFolder);
  folder.GetVariable("LOGDIR");
  return folder;
}

}  // namespace detail
}  // namespace znutil
