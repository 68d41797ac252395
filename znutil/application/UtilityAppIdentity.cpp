// UtilityApp: what the library knows of the process that loaded it.
#include <znutil/application/UtilityApp.h>

#include <znutil/application/internal/IdentityStart.h>
#include <znutil/concurrency/ZnCriticalSection.h>
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

namespace {

// Taken by a start while it writes the identity and by the library's own
// threads (the logger may run before the start) while they read it.
ZnCriticalSection &IdentityLock() {
  static ZnCriticalSection *lock = new ZnCriticalSection;
  return *lock;
}

// The executable does not change, so a start after a stop normally finds
// the same text and writes nothing.
void Publish(ZnString &field, ZnString const &value) {
  IdentityLock().Enter();
  if (field != value) field = value;
  IdentityLock().Leave();
}

}  // namespace

void UtilityApp::InitAppName() {
  ZnString const executable(platform::ExecutablePath().c_str());
  ZnString name;
  executable.SplitPath(nullptr, nullptr, &name, nullptr);
  Publish(fsAppName, name);
}

void UtilityApp::InitStartupDirectory() {
  ZnString folder = ZnGetDirectoryFromPath(ZnString(platform::ExecutablePath().c_str()));
  ZnDirectory::StripTrailingDirChar(folder);
  Publish(fsProgramStartupDirectory, folder);
}

void znutil::detail::IdentityStart::Read(ZnString *name, ZnString *folder) {
  IdentityLock().Enter();
  *name = ZnString(UtilityApp::fsAppName.Chars());
  *folder = ZnString(UtilityApp::fsProgramStartupDirectory.Chars());
  IdentityLock().Leave();
}

void znutil::detail::IdentityStart::Run() {
  UtilityApp::InitAppName();
  UtilityApp::InitStartupDirectory();
}
