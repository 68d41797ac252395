// Every static object of the logger, in one block. The order is the one
// the library's start-up needs: the locks, the start-up event, the default
// title and the six filters first, the plain state after them.
#include <znutil/logging/ZnLogger.h>

#include <fstream>

#include <znutil/logging/ZnLoggerFrame.h>
#include <znutil/logging/internal/ZnLoggerFrameUI.h>

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

// Built last, so destroyed first: a logger still running when the process
// ends (no Shutdown, or a disabled logger) is stopped while the objects
// above still stand. Its records are written; its flags are not saved.
class ZnLoggerExitGuard {
 public:
  ~ZnLoggerExitGuard() { ZnLogger::StopThread(); }
};

static ZnLoggerExitGuard exitGuard;
