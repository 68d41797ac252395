// The library's start and stop.
#include <atomic>

#include <znutil/application/UtilityApp.h>
#include <znutil/application/internal/IdentityStart.h>
#include <znutil/concurrency/internal/ZnThreadRecord.h>
#include <znutil/configuration/internal/ZnCfgManager.h>
#include <znutil/logging/ZnLogger.h>
#include <znutil/platform/UserInterface.h>
#include <znutil/system/ZnTaskList.h>

namespace {

// 1 between a start and a stop. The exchange lets exactly one caller win
// each transition; it is no barrier (a second starter may return before the
// first has finished): deliberate.
std::atomic<int> iUtilityLibraryStarted{0};

}  // namespace

bool InitializeUtilityLibrary(ZnString const &logWindowTitle, ZnString const &configFilePath,
                              bool noUserInterface) {
  znutil::detail::AttachThread();
  if (iUtilityLibraryStarted.exchange(1) != 0) return true;
  if (!noUserInterface) znutil::platform::InitCommonControls();
  znutil::detail::IdentityStart::Run();
  InitializeConfiguration(configFilePath);
  ZnTaskList::Initialize();
  if (noUserInterface) return true;
  if (logWindowTitle != NULL_STRING) ZnLogger::SuggestLogWindowTitle(logWindowTitle);
  ZnLogger::Initialize();
  return true;
}

bool ShutdownUtilityLibrary() {
  if (iUtilityLibraryStarted.exchange(0) == 0) return true;
  ZnLogger::Shutdown();
  ShutdownConfiguration();
  // A message of the configuration's thread that was already on its way
  // into the logger when it stopped may have started it again (that thread
  // has ended now): the stop leaves no library thread.
  if (ZnLogger::IsInitialized()) ZnLogger::Shutdown();
  return true;
}
