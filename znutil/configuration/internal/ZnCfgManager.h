// ZnCfgManager: the owner of the process's two configuration files, and the
// thread that keeps them in step with the disk.
//
//   InitializeConfiguration("");   // both files parsed here, thread started
//   ...                            // settings through ZnConfiguration
//   ShutdownConfiguration();       // flushed, thread ended, files released
//
// Every 200 ms the thread delivers the parser's queued messages, flushes
// both files, then refreshes both: a change in memory reaches the disk,
// and a change on the disk reaches memory, within one turn. Flushing first
// keeps a newer change in memory from being dropped by a re-read.
#ifndef ZNUTIL_CONFIGURATION_INTERNAL_ZNCFGMANAGER_H
#define ZNUTIL_CONFIGURATION_INTERNAL_ZNCFGMANAGER_H

#include <atomic>

#include <znutil/concurrency/ZnEvent.h>
#include <znutil/concurrency/ZnThread.h>
#include <znutil/concurrency/ZnThreadWork.h>
#include <znutil/configuration/ZnCfgFile.h>
#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

class ZnCfgManager : public ZnThread, public ZnThreadWork {
 public:
  /// Index of each file, as ZnConfiguration takes it.
  static constexpr int kProfile = 0;
  static constexpr int kGlobal = 1;

  /// Opens, backs up and parses both files on the calling thread; the
  /// thread starts suspended. An empty path stands for the start-up
  /// directory's AppName.cfg; the global file is Lumiframe.cfg in the
  /// system directory.
  explicit ZnCfgManager(ZnString const &configFilePath);
  /// Releases both files.
  ~ZnCfgManager() override;

  /// The turns, until the stop; then a last flush.
  void Work() override;
  /// Ends the thread's turns and waits for its end, after which the
  /// manager is gone.
  void Stop();

  /// Flush on the profile, then on the global file.
  void FlushFiles();
  /// The file of that index; null for any other index.
  ZnCfgFile *File(int index) const;
  /// The computer's name in lower case.
  ZnString const &MachineName() const { return fsMachineName; }
  /// ZnConfiguration objects alive; counted, never waited for.
  void AddUser(int change) { iConfigurationUsers.fetch_add(change); }

 private:
  bool Stopping() const;
  void Turn();

  std::atomic<int> iConfigurationUsers;
  ZnCfgFile *pfProfile;
  ZnCfgFile *pfGlobal;
  ZnString fsMachineName;
  ZnEvent evtStop;
  std::atomic<bool> bStopping;
};

// A settings call's hold on the running manager: while it lives, the
// manager it found (null if none) is not deleted.
class ZnCfgManagerUse {
 public:
  ZnCfgManagerUse();
  ~ZnCfgManagerUse();
  ZnCfgManagerUse(ZnCfgManagerUse const &) = delete;
  ZnCfgManagerUse &operator=(ZnCfgManagerUse const &) = delete;
  ZnCfgManager *Manager() const { return pManager; }

 private:
  ZnCfgManager *pManager;
};

/// Makes and starts the manager unless one runs; always true.
ZNUTIL_API bool InitializeConfiguration(ZnString const &configFilePath);
/// Flushes both files, then stops the manager and waits for its thread:
/// calls that race the stop either finish first or see no manager. Always
/// true.
ZNUTIL_API bool ShutdownConfiguration();
/// Flushes both files on the calling thread, when a manager runs.
ZNUTIL_API void FlushConfiguration();

#endif  // ZNUTIL_CONFIGURATION_INTERNAL_ZNCFGMANAGER_H
