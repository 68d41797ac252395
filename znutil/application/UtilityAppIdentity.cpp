// UtilityApp: what the library knows of the process that loaded it.
#include <znutil/application/UtilityApp.h>

#include <znutil/application/internal/IdentityStart.h>
#include <znutil/platform/Module.h>
#include <znutil/system/ZnDirectory.h>
#include <znutil/system/ZnPathFunctions.h>

namespace platform = znutil::platform;

ZnString UtilityApp::fsAppName;
ZnString UtilityApp::fsProgramStartupDirectory;
// Taken when the library is loaded, as the process attach of the original does.
HINSTANCE UtilityApp::hLibInstance = platform::LibraryModule();
// Kept for the interface beside the other accounting stubs; nothing counts into it.
unsigned long UtilityApp::udwMemoryUsage = 0;

ZnString const &UtilityApp::AppName() { return fsAppName; }

ZnString const &UtilityApp::StartupDir() { return fsProgramStartupDirectory; }

HINSTANCE UtilityApp::LibInstance() { return hLibInstance; }

void UtilityApp::InitAppName() {
  ZnString const executable(platform::ExecutablePath().c_str());
  executable.SplitPath(nullptr, nullptr, &fsAppName, nullptr);
}

void UtilityApp::InitStartupDirectory() {
  fsProgramStartupDirectory = ZnGetDirectoryFromPath(ZnString(platform::ExecutablePath().c_str()));
  ZnDirectory::StripTrailingDirChar(fsProgramStartupDirectory);
}

void znutil::detail::IdentityStart::Run() {
  UtilityApp::InitAppName();
  UtilityApp::InitStartupDirectory();
}
