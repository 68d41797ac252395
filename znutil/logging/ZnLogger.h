// ZnLogger: the library's message sink. Any thread hands it a typed message
// with a source and a category; one logger thread takes the queue ten times
// a second, shows each message in the logger frame and appends it to the
// log file. The logger starts itself on the first message.
//
//   ZnLogger::Log(ZnLogger::kWarning, ZnString("Parser"), ZnString("Syntax"),
//                 ZnString("line 12: missing value"));
//   ZnString const a("first line"), b("second line");
//   ZnLogger::Log(ZnLogger::kError, source, category, &a, &b, nullptr);
//   ...
//   ZnLogger::Shutdown();   // every message logged so far is in the file
//
// The low 16 bits of the first argument of Log are the type (0 Information,
// 1 Warning, 2 Error); the high 16 bits are flags: kQuiet keeps the frame
// down, kLoud brings it up. Log never waits for the logger thread and never
// does I/O.
#ifndef ZNUTIL_LOGGING_ZNLOGGER_H
#define ZNUTIL_LOGGING_ZNLOGGER_H

#include <atomic>
#include <iosfwd>
#include <string>

#include <znutil/concurrency/ZnAtomicWord.h>
#include <znutil/concurrency/ZnCriticalSection.h>
#include <znutil/concurrency/ZnEvent.h>
#include <znutil/containers/ZnDblList.h>
#include <znutil/containers/ZnListContext.h>
#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/system/ZnSystemTime.h>
#include <znutil/text/ZnString.h>
#include <znutil/text/ZnStringList.h>

class ZnLoggerFrame;
class ZnLoggerFrameUI;
class ZnThread;

class ZNUTIL_API ZnLogger {
 public:
  /// Message types: the low 16 bits of the first argument of Log.
  static constexpr int kInformation = 0;
  static constexpr int kWarning = 1;
  static constexpr int kError = 2;
  /// Flags: the high 16 bits, on a message and in the logger's flags.
  /// On a message, kQuiet keeps the frame down and kLoud brings it up. In
  /// the logger's flags, kQuiet turns automatic activation off and kLoud
  /// brings the frame up for every message that is not quiet.
  static constexpr int kQuiet = 0x10000;
  static constexpr int kLoud = 0x20000;
  /// Filter indexes, equal to the filter types.
  static constexpr int kFilterInformation = 0;
  static constexpr int kFilterWarning = 1;
  static constexpr int kFilterError = 2;
  static constexpr int kFilterSource = 3;
  static constexpr int kFilterCategory = 4;
  static constexpr int kFilterMessage = 5;
  static constexpr int kFilterCount = 6;

  /// One logged message, as the logger keeps it.
  class ZNUTIL_API ZnLogMessage {
   public:
    ZNUTIL_FIXED_BLOCK_OPERATORS

    /// Splits `typeAndFlags`, stamps the local time now, and copies the
    /// texts (deeply: the record moves to the logger thread). A type 0
    /// message is always quiet.
    ZnLogMessage(int typeAndFlags, ZnString const &source, ZnString const &category);
    virtual ~ZnLogMessage();
    ZnLogMessage(ZnLogMessage const &) = delete;
    ZnLogMessage &operator=(ZnLogMessage const &) = delete;

    /// Appends a deep copy of one line of text.
    void AddLine(ZnString const &line);
    /// The record as the log file holds it: the time, type, source and
    /// category on one line, a tab before each text line, an empty line.
    ZnString FileText() const;
    /// A debug dump: the time, then "\tSource:   ", "\tCategory: " and
    /// "\t\t" before each text line. Nothing in the library uses it.
    ZnString ConsoleText() const;

    ZnListContext lcPosition;    ///< starts as the null context
    int iType;                   ///< the low 16 bits
    ZnSystemTime stTime;         ///< local time of the Log call
    ZnString fsSource;           ///< copy
    ZnString fsCategory;         ///< copy
    ZnStringList slMessage;      ///< the text lines, copied
    int iFlags;                  ///< the high 16 bits, kQuiet added for type 0
    int iListItem;               ///< row in the frame, set when shown; -1 before
  };

  /// One of the six filters of the frame.
  class ZNUTIL_API LoggerFilter {
   public:
    LoggerFilter(int type, bool enabled, ZnString const &text);
    LoggerFilter(LoggerFilter const &other);
    LoggerFilter &operator=(LoggerFilter const &other);
    virtual ~LoggerFilter();

    int iFilterType;
    bool bEnabled;
    ZnString fsText;
  };

  ZnLogger() {}
  virtual ~ZnLogger();

  /// Starts the logger thread if none runs, and ORs in the saved flags.
  /// False only on a disabled logger; true at once while a start is
  /// under way. Never waits for the thread.
  static bool Initialize();
  /// Writes every message logged before the call to the file, stops the
  /// logger thread and waits for its end, then flushes and closes the
  /// file. Nothing on a disabled logger. A later Log starts again.
  static void Shutdown();

  /// Logs the lines given as pointers, ended by a null pointer; `first`
  /// may itself be null, for no lines. End the list with nullptr (not a
  /// plain 0, which is narrower than a pointer here).
  static void Log(int typeAndFlags, ZnString const &source, ZnString const &category, ZnString const *first, ...);
  /// Logs one line.
  static void Log(int typeAndFlags, ZnString const &source, ZnString const &category, ZnString const &text);
  /// Logs the list's lines in order.
  static void Log(int typeAndFlags, ZnString const &source, ZnString const &category, ZnStringList const &lines);

  /// "Information", "Warning", "Error" for 0, 1, 2; "Unknown" otherwise.
  static ZnString TypeToString(int type);

  /// ORs in the high 16 bits of `flags`; the low bits are ignored.
  static void SetFlags(int flags);
  /// Clears the bits given in the high 16 bits of `flags`.
  static void ClearFlags(int flags);
  /// The logger's flags (high 16 bits only).
  static int GetFlags();

  /// Sets filter `index` (0 to 5; others are ignored). The frame is
  /// refilled from every past message when the filter changes; the file
  /// is never affected.
  static void Filter(int index, bool enable, ZnString const &text);
  /// The filter at `index`, with no range test.
  static LoggerFilter const *QueryFilter(int index);

  /// Turns Log and Shutdown into no-ops for good. There is no way back.
  static void DisableLogger();
  /// True from the end of a start until the next Shutdown.
  static bool IsInitialized();

  /// Stores the frame's title; the next tick of the logger thread shows it.
  static void SuggestLogWindowTitle(ZnString const &title);
  /// Asks for the frame's rows to be deleted at the next tick. The stored
  /// messages and the file stay.
  static void ClearWindow();
  /// The frame as an opaque handle; null while there is none.
  static HWND LoggerWindow();
  /// Allows or forbids the frame to come up by itself, and shows or
  /// removes its notification icon.
  static void EnableWindowOutput(bool enable);
  /// Shows (restoring it from iconic) and raises the frame, or hides it.
  static void ShowLoggerWindow(bool show);
  /// Whether the frame is shown.
  static bool IsLoggerWindowVisible();

 private:
  friend class ZnLoggerFrame;
  friend class ZnLoggerFrameUI;
  friend class ZnLoggerProcessHooks;

  static ZnLogMessage *NewRecord(int typeAndFlags, ZnString const &source, ZnString const &category);
  static void Enqueue(ZnLogMessage *record);
  static void StopThread();
  static void ThreadInitialize();
  static void DoWork();
  static void *TakeQueue();
  static void FinalDrain();
  static void FilterMessage(ZnLogMessage *message);
  static void DisplayLogMessageWindow();
  static void OnTick();
  static void CreateFrame();
  static void DestroyFrame();
  static void AppendRecord(std::string &batch, ZnLogMessage const *message);
  static void WriteBatch(std::string const &batch);
  static void DestroyRecords(ZnDblList *list);

  // Defined together, in the order in which the library's start-up needs them.
  static ZnCriticalSection csLoggerLock;
  static ZnCriticalSection csQueueLock;
  static ZnEvent evtStartup;
  static ZnString fsLogWindowTitle;
  static LoggerFilter aFilters[kFilterCount];

  // Read by any thread, hence atomic.
  static std::atomic<bool> bEnabled;
  static std::atomic<bool> bWindowEnabled;
  static std::atomic<bool> bInitializing;
  static std::atomic<bool> bInitialized;
  static bool bClearWindowPending;
  static bool bFilterChangePending;
  static bool bFilterEnabled;
  static std::atomic<int> iLoggerFlags;
  static ZnDblList *plLogQueue;
  static ZnDblList *plLogMessages;
  static std::atomic<ZnLoggerFrameUI *> pwthrdLoggerThread;
  static ZnLoggerFrame *pwndLogMessageWindow;
  static std::ofstream *pofsLogFile;
  static ZnAtomicWord awLogWindowTitleSet;
  // Start and stop run one at a time.
  static ZnCriticalSection csLifetimeLock;
};

#endif  // ZNUTIL_LOGGING_ZNLOGGER_H
