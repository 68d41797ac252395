// Every static object of the logger, in one block. The order is the one
// the library's start-up needs: the locks, the start-up event, the default
// title and the six filters first, the plain state after them.
#include <znutil/logging/ZnLogger.h>

#include <fstream>

#include <znutil/logging/ZnLoggerFrame.h>
#include <znutil/logging/internal/ZnLoggerFrameUI.h>
#include <znutil/platform/Fork.h>

ZnCriticalSection ZnLogger::csLoggerLock;
ZnCriticalSection ZnLogger::csQueueLock;
ZnEvent ZnLogger::evtStartup(false);
ZnString ZnLogger::fsLogWindowTitle("Logger");
ZnLogger::LoggerFilter ZnLogger::aFilters[ZnLogger::kFilterCount] = {
    {kFilterInformation, true, ZnString()}, {kFilterWarning, true, ZnString()},
    {kFilterError, true, ZnString()},       {kFilterSource, false, ZnString()},
    {kFilterCategory, false, ZnString()},   {kFilterMessage, false, ZnString()}};

std::atomic<bool> ZnLogger::bEnabled(true);
std::atomic<bool> ZnLogger::bWindowEnabled(true);
std::atomic<bool> ZnLogger::bInitializing(false);
std::atomic<bool> ZnLogger::bInitialized(false);
bool ZnLogger::bClearWindowPending = false;
bool ZnLogger::bFilterChangePending = false;
bool ZnLogger::bFilterEnabled = false;
std::atomic<int> ZnLogger::iLoggerFlags(0);
ZnDblList *ZnLogger::plLogQueue = nullptr;
ZnDblList *ZnLogger::plLogMessages = nullptr;
std::atomic<ZnLoggerFrameUI *> ZnLogger::pwthrdLoggerThread(nullptr);
ZnLoggerFrame *ZnLogger::pwndLogMessageWindow = nullptr;
std::ofstream *ZnLogger::pofsLogFile = nullptr;
ZnAtomicWord ZnLogger::awLogWindowTitleSet;
ZnCriticalSection ZnLogger::csLifetimeLock;

// The logger's part in the process's own events: its forks and its end.
class ZnLoggerProcessHooks {
 public:
  ZnLoggerProcessHooks() { znutil::platform::OnFork(nullptr, nullptr, &AfterForkInChild); }
  // Built last, so destroyed first: a logger still running when the process
  // ends (no Shutdown, or a disabled logger) is stopped while the objects
  // above still stand. Its records are written; its flags are not saved.
  ~ZnLoggerProcessHooks() { ZnLogger::StopThread(); }

 private:
  // What the parent's logger held, as the child found it.
  struct Remains {
    ZnLoggerFrameUI *pThread;
    ZnLoggerFrame *pFrame;
    ZnDblList *pQueue;
    ZnDblList *pMessages;
    std::ofstream *pFile;
  };

  // The child has none of the parent's threads, so its logger is not
  // running: it starts afresh on the child's next message, and a stop (the
  // one at the child's exit included) has no thread to wait for. What the
  // parent's logger held is kept, untouched and reachable: the parent
  // writes those records, and freeing them here could block on a lock
  // that another thread of the parent held at the fork.
  // A start that another thread was making is abandoned with it.
  static void AfterForkInChild() {
    static Remains remains;
    remains = Remains{ZnLogger::pwthrdLoggerThread.exchange(nullptr), ZnLogger::pwndLogMessageWindow,
                      ZnLogger::plLogQueue, ZnLogger::plLogMessages, ZnLogger::pofsLogFile};
    ZnLogger::pwndLogMessageWindow = nullptr;
    ZnLogger::plLogQueue = nullptr;
    ZnLogger::plLogMessages = nullptr;
    ZnLogger::pofsLogFile = nullptr;
    ZnLogger::bInitialized.store(false);
    if (ZnLogger::bEnabled.load()) ZnLogger::bInitializing.store(false);
  }
};

static ZnLoggerProcessHooks processHooks;
