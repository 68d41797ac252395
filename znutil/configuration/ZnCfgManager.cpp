#include <znutil/configuration/internal/ZnCfgManager.h>

#include <znutil/application/UtilityApp.h>
#include <znutil/concurrency/ZnCriticalSection.h>
#include <znutil/concurrency/ZnSleeper.h>
#include <znutil/configuration/ZnCfgFileParser.h>
#include <znutil/platform/Host.h>
#include <znutil/system/ZnFileInformation.h>
#include <znutil/system/ZnPathFunctions.h>

namespace {

constexpr ZnULong kTurnMilliseconds = 200;

// The running manager, and the settings calls that may be using it. A stop
// takes the manager away first and then waits for the calls to leave, so
// that none of them touches it while it is deleted.
std::atomic<ZnCfgManager *> pCfgManager{nullptr};
std::atomic<int> iCallsInFlight{0};

// Starts and stops come one at a time.
ZnCriticalSection &LifetimeLock() {
  static ZnCriticalSection lock;
  return lock;
}

class LifetimeGuard {
 public:
  LifetimeGuard() { LifetimeLock().Enter(); }
  ~LifetimeGuard() { LifetimeLock().Leave(); }
  LifetimeGuard(LifetimeGuard const &) = delete;
  LifetimeGuard &operator=(LifetimeGuard const &) = delete;
};

// An unknown start-up directory (the identity not filled yet) leaves the
// name relative to the current directory rather than at the root.
ZnString ProfilePath(ZnString const &configFilePath) {
  if (configFilePath != NULL_STRING) return configFilePath;
  ZnString const name = UtilityApp::AppName() + ZnString(".cfg");
  return UtilityApp::StartupDir() == NULL_STRING ? name : UtilityApp::StartupDir() ^ name;
}

ZnString GlobalPath() {
  ZnString directory = ZnGetSystemDirectory();
  if (directory.Length() == 0 || directory.Chars()[directory.Length() - 1] != '\\') directory += "\\";
  return directory + ZnString("Lumiframe.cfg");
}

// A file object on `path`, backed up, and loaded when the file is there.
ZnCfgFile *OpenFile(ZnString const &path) {
  bool const exists = ZnFileInformation(path).Valid();
  auto *file = new ZnCfgFile(path);
  file->Backup();
  if (exists) file->Refresh();
  return file;
}

}  // namespace

ZnCfgManager::ZnCfgManager(ZnString const &configFilePath)
    : ZnThread(kSelfDeleting | kStartSuspended),
      iConfigurationUsers(0),
      pfProfile(OpenFile(ProfilePath(configFilePath))),
      pfGlobal(OpenFile(GlobalPath())),
      fsMachineName(ZnString(znutil::platform::ComputerName().c_str()).ToLower()),
      evtStop(true),
      bStopping(false) {}

ZnCfgManager::~ZnCfgManager() {
  delete pfProfile;
  delete pfGlobal;
}

ZnCfgFile *ZnCfgManager::File(int index) const {
  return index == kProfile ? pfProfile : index == kGlobal ? pfGlobal : nullptr;
}

void ZnCfgManager::FlushFiles() {
  pfProfile->Flush();
  pfGlobal->Flush();
}

bool ZnCfgManager::Stopping() const { return bStopping.load() || (GetState() & kShutdownRequested) != 0; }

void ZnCfgManager::Turn() {
  ZnCfgFileParser::PurgeErrorMessages();
  FlushFiles();
  pfProfile->Refresh();
  pfGlobal->Refresh();
}

// The pause between turns is a wait on the stop event, so that a stop does
// not wait out the rest of it.
void ZnCfgManager::Work() {
  while (!Stopping()) {
    evtStop.Wait(kTurnMilliseconds);
    if (Stopping()) break;
    Turn();
  }
  FlushFiles();
}

void ZnCfgManager::Stop() {
  bStopping.store(true);
  evtStop.Signal();
  SignalShutdown(true);  // the thread deletes this object as it ends
}

// Only a call that finds a manager is counted, and it is counted before it
// looks again: a stop, which takes the manager away before it waits for
// the count, waits for the calls that can still use it and for no call
// that comes after it, however many threads keep calling.
ZnCfgManagerUse::ZnCfgManagerUse() : pManager(nullptr) {
  if (pCfgManager.load() == nullptr) return;
  iCallsInFlight.fetch_add(1);
  pManager = pCfgManager.load();
  if (pManager == nullptr) iCallsInFlight.fetch_sub(1);
}

ZnCfgManagerUse::~ZnCfgManagerUse() {
  if (pManager != nullptr) iCallsInFlight.fetch_sub(1);
}

bool InitializeConfiguration(ZnString const &configFilePath) {
  LifetimeGuard const guard;
  if (pCfgManager.load() != nullptr) return true;
  auto *manager = new ZnCfgManager(configFilePath);
  pCfgManager.store(manager);
  manager->Resume();
  manager->AssignWork(manager, 10000);
  return true;
}

bool ShutdownConfiguration() {
  LifetimeGuard const guard;
  ZnCfgManager *manager = pCfgManager.load();
  if (manager == nullptr) return true;
  manager->FlushFiles();
  pCfgManager.store(nullptr);
  // Calls that found the manager end soon: they work on memory, or wait
  // for one flush at most.
  while (iCallsInFlight.load() != 0) ZnSleeper::Snooze(1);
  manager->Stop();
  return true;
}

void FlushConfiguration() {
  ZnCfgManagerUse const use;
  if (use.Manager() != nullptr) use.Manager()->FlushFiles();
}
