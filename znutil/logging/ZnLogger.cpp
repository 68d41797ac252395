// ZnLogger: start, stop, and the path of a message into the queue.
#include <znutil/logging/ZnLogger.h>

#include <cstdarg>

#include <znutil/concurrency/internal/Entered.h>
#include <znutil/logging/internal/LoggerSettings.h>
#include <znutil/logging/internal/RecordText.h>
#include <znutil/logging/internal/ZnLoggerFrameUI.h>
#include <znutil/platform/Scheduling.h>

using znutil::detail::Entered;

namespace {

constexpr unsigned kFlagBits = 0xFFFF0000u;

int HighBits(int value) { return static_cast<int>(static_cast<unsigned>(value) & kFlagBits); }

}  // namespace

ZnLogger::~ZnLogger() {}

bool ZnLogger::Initialize() {
  if (bInitializing.exchange(true)) return true;
  // bInitializing stays set on a disabled logger, so that later calls
  // return true while nothing runs: deliberate.
  if (!bEnabled.load()) return false;
  Entered lifetime(csLifetimeLock);
  Entered logger(csLoggerLock);
  bool const start = pwthrdLoggerThread.load() == nullptr;
  // The lists come before the saved flags, so that a message logged while
  // they are read finds a queue to wait in.
  if (start) {
    plLogMessages = new ZnDblList;
    Entered queue(csQueueLock);
    plLogQueue = new ZnDblList;
  }
  iLoggerFlags.fetch_or(HighBits(znutil::detail::LoadSavedLoggerFlags()));
  if (start) {
    auto *thread = new ZnLoggerFrameUI;
    thread->AssignWork(thread, 0);
    thread->SetPriority(3);
    pwthrdLoggerThread.store(thread);
    thread->Resume();
  }
  bInitializing.store(false);
  bInitialized.store(true);
  return true;
}

// The flags are saved only by a logger that runs: the library's stop calls
// this after a start without a user interface too, and must then leave the
// saved flags of an earlier run alone.
void ZnLogger::Shutdown() {
  if (!bEnabled.load()) return;
  if (pwthrdLoggerThread.load() != nullptr) znutil::detail::SaveLoggerFlags(HighBits(iLoggerFlags.load()));
  StopThread();
}

// The thread ends first, then what it had not yet taken is written: every
// message logged before this call reaches the file exactly once.
void ZnLogger::StopThread() {
  // Those who wait for the logger (the configuration parser keeps its
  // messages until then) must not start it again behind a stop: from here
  // on they queue their messages.
  bInitialized.store(false);
  Entered lifetime(csLifetimeLock);
  ZnLoggerFrameUI *thread = pwthrdLoggerThread.load();
  if (thread == nullptr) return;
  thread->Quit();
  thread->SignalShutdown(true);  // the thread object is gone after this
  Entered logger(csLoggerLock);
  FinalDrain();
  pwthrdLoggerThread.store(nullptr);
}

ZnLogger::ZnLogMessage *ZnLogger::NewRecord(int typeAndFlags, ZnString const &source, ZnString const &category) {
  if (!bEnabled.load()) return nullptr;
  if (pwthrdLoggerThread.load() == nullptr) Initialize();
  return new ZnLogMessage(typeAndFlags, source, category);
}

// A stop may take the queue away between the test of the thread and the
// append; the message then starts the logger again and waits in the new
// queue. While another thread is starting it, this one yields and retries.
// The record's node is made before the lock is taken, so that the lock
// covers only the linking.
void ZnLogger::Enqueue(ZnLogMessage *record) {
  ZnDblList one;
  one.Append(record);
  for (;;) {
    {
      Entered queue(csQueueLock);
      if (plLogQueue != nullptr) {
        plLogQueue->Merge(one, ZnDblList::After, NULL_CONTEXT);
        return;
      }
    }
    if (!bEnabled.load() || !Initialize()) break;
    znutil::platform::YieldProcessor();
  }
  delete record;
}

void ZnLogger::Log(int typeAndFlags, ZnString const &source, ZnString const &category, ZnString const *first, ...) {
  ZnLogMessage *record = NewRecord(typeAndFlags, source, category);
  if (record == nullptr) return;
  va_list lines;
  va_start(lines, first);
  for (ZnString const *line = first; line != nullptr; line = va_arg(lines, ZnString const *)) record->AddLine(*line);
  va_end(lines);
  Enqueue(record);
}

void ZnLogger::Log(int typeAndFlags, ZnString const &source, ZnString const &category, ZnString const &text) {
  ZnLogMessage *record = NewRecord(typeAndFlags, source, category);
  if (record == nullptr) return;
  record->AddLine(text);
  Enqueue(record);
}

void ZnLogger::Log(int typeAndFlags, ZnString const &source, ZnString const &category, ZnStringList const &lines) {
  ZnLogMessage *record = NewRecord(typeAndFlags, source, category);
  if (record == nullptr) return;
  ZnListContext position;
  for (ZnString *line = lines.First(position); line != nullptr; line = lines.Next(position)) record->AddLine(*line);
  Enqueue(record);
}

ZnString ZnLogger::TypeToString(int type) { return ZnString(znutil::detail::TypeWord(type)); }

void ZnLogger::SetFlags(int flags) { iLoggerFlags.fetch_or(HighBits(flags)); }

void ZnLogger::ClearFlags(int flags) { iLoggerFlags.fetch_and(~HighBits(flags)); }

int ZnLogger::GetFlags() { return iLoggerFlags.load(); }

void ZnLogger::DisableLogger() { bEnabled.store(false); }

bool ZnLogger::IsInitialized() { return bInitialized.load(); }
