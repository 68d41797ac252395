// ZnLogger: what the logger thread does. The frame, the file, the stored
// messages and the filters are all guarded by csLoggerLock.
#include <znutil/logging/ZnLogger.h>

#include <fstream>
#include <string>

#include <znutil/application/internal/IdentityStart.h>
#include <znutil/logging/ZnLoggerFrame.h>
#include <znutil/concurrency/internal/Entered.h>
#include <znutil/logging/internal/LoggerSettings.h>
#include <znutil/logging/internal/RecordText.h>
#include <znutil/platform/Directory.h>
#include <znutil/platform/PathText.h>

using znutil::detail::Entered;

namespace {

bool PopsUp(int messageFlags, int loggerFlags) {
  int const either = ZnLogger::kQuiet | ZnLogger::kLoud;
  return (messageFlags & ZnLogger::kLoud) || ((loggerFlags & ZnLogger::kLoud) && !(messageFlags & ZnLogger::kQuiet)) ||
         !((messageFlags | loggerFlags) & either);
}


bool OpenForAppend(std::ofstream &file, ZnString const &path) {
  file.clear();
  file.open(znutil::platform::ToSystemPath(path.Chars()), std::ios::out | std::ios::app | std::ios::binary);
  return file.is_open();
}

// The log folder (when one is known), the current folder, then TEMP. A
// place that cannot be written fails to open and is passed over; when none
// opens, the stream stays closed and writes to it are lost quietly. The
// identity is read under its lock: this thread may run before the start.
void OpenLogFile(std::ofstream &file) {
  ZnString app, startupFolder;
  znutil::detail::IdentityStart::Read(&app, &startupFolder);
  ZnString const name = (app == NULL_STRING ? ZnString("LOGGER") : app) + ZnString(".log");
  ZnString const folder = znutil::detail::LoggerDirectory(startupFolder);
  if (folder != NULL_STRING && OpenForAppend(file, folder ^ name)) return;
  if (OpenForAppend(file, name)) return;
  OpenForAppend(file, ZnString(znutil::platform::TemporaryDirectory().c_str()) ^ name);
}

ZnString Detached(ZnString const &text) { return ZnString(text.Chars()); }

bool SameSecond(SYSTEMTIME const &a, SYSTEMTIME const &b) {
  return a.wSecond == b.wSecond && a.wMinute == b.wMinute && a.wHour == b.wHour && a.wDay == b.wDay &&
         a.wMonth == b.wMonth && a.wYear == b.wYear;
}

// The time texts of one second, made once: a batch holds many records of
// the same second. Used under csLoggerLock only, so rows may share them.
struct Stamps {
  SYSTEMTIME key{};
  bool known = false;
  std::string record;
  ZnString date;
  ZnString time;
};

Stamps &StampsOf(ZnSystemTime const &time) {
  static Stamps &stamps = *new Stamps;  // never destroyed: a stop at exit still writes
  if (!stamps.known || !SameSecond(stamps.key, time)) {
    ZnString record, date, clock;
    record.FormatTime(znutil::detail::kRecordTimeFormat, time);
    date.FormatTime("%#m/%#d/%y", time);
    clock.FormatTime("%#I:%M:%S %p", time);
    stamps = Stamps{time, true, record.Chars(), date, clock};
  }
  return stamps;
}

// The row shares the record's strings: both are only touched under
// csLoggerLock, and Capture hands out copies of its own.
ZnLoggerFrame::Row RowOf(ZnLogger::ZnLogMessage const &message) {
  Stamps const &stamps = StampsOf(message.stTime);
  ZnLoggerFrame::Row row{stamps.date, stamps.time, message.fsSource, message.fsCategory, ZnString()};
  ZnListContext position;
  ZnString const *line = message.slMessage.First(position);
  if (message.slMessage.GetCount() == 1) {
    row.fsMessage = *line;
  } else if (line != nullptr) {
    std::string text = line->Chars();
    while ((line = message.slMessage.Next(position)) != nullptr) text.append(" ").append(line->Chars());
    row.fsMessage = ZnString(text.c_str());
  }
  return row;
}

// Case-insensitive; each line is searched from its start.
bool AnyLineContains(ZnStringList const &lines, ZnString const &text) {
  ZnListContext position;
  for (ZnString *line = lines.First(position); line != nullptr; line = lines.Next(position)) {
    if (line->CaseContainsSubString(text) >= 0) return true;
  }
  return false;
}

// The six filters in order. A type filter that is off hides its type; a
// source or category filter that is on hides what differs from its text
// (without regard to case), and the text filter what no line contains.
bool Passes(ZnLogger::LoggerFilter const *filters, ZnLogger::ZnLogMessage const &message) {
  bool show = true;
  for (int index = 0; index < ZnLogger::kFilterCount; ++index) {
    ZnLogger::LoggerFilter const &filter = filters[index];
    if (index <= ZnLogger::kFilterError) {
      if (message.iType == filter.iFilterType && !filter.bEnabled) show = false;
    } else if (filter.bEnabled && index != ZnLogger::kFilterMessage) {
      ZnString const &field = index == ZnLogger::kFilterSource ? message.fsSource : message.fsCategory;
      show = show && field.CaseCompare(filter.fsText) == 0;
    } else if (filter.bEnabled && show) {
      show = AnyLineContains(message.slMessage, filter.fsText);
    }
  }
  return show;
}

}  // namespace

// The frame starts hidden, with the title stored so far.
void ZnLogger::CreateFrame() {
  Entered logger(csLoggerLock);
  Entered queue(csQueueLock);
  pwndLogMessageWindow = new ZnLoggerFrame(Detached(fsLogWindowTitle), bWindowEnabled.load());
}

void ZnLogger::DestroyFrame() {
  Entered logger(csLoggerLock);
  delete pwndLogMessageWindow;
  pwndLogMessageWindow = nullptr;
}

void ZnLogger::ThreadInitialize() {
  Entered logger(csLoggerLock);
  if (pofsLogFile != nullptr) return;
  auto *file = new std::ofstream;
  OpenLogFile(*file);
  pofsLogFile = file;
}

void ZnLogger::OnTick() {
  if (awLogWindowTitleSet.Set(0) == 1) {
    ZnString title;
    {
      Entered queue(csQueueLock);
      title = Detached(fsLogWindowTitle);
    }
    Entered logger(csLoggerLock);
    if (pwndLogMessageWindow != nullptr) pwndLogMessageWindow->SetTitle(title);
  }
  DoWork();
}

void ZnLogger::DisplayLogMessageWindow() { pwndLogMessageWindow->BringUp(); }

// Moves the whole queue behind the stored messages in one operation and
// yields the first message moved, or null.
void *ZnLogger::TakeQueue() {
  Entered queue(csQueueLock);
  if (plLogQueue->GetCount() == 0) return nullptr;
  ZnListContext position;
  void *const first = plLogQueue->GetFirst(position);
  plLogMessages->Merge(*plLogQueue, ZnDblList::After, NULL_CONTEXT);
  return first;
}

// One pass over what arrived since the last tick. After a filter change
// the rows are rebuilt from every stored message, and only the messages
// that are new in this pass go to the file.
void ZnLogger::DoWork() {
  if (pwthrdLoggerThread.load() == nullptr) return;
  Entered logger(csLoggerLock);
  if (pwndLogMessageWindow != nullptr) {
    if (bClearWindowPending) {
      bClearWindowPending = false;
      pwndLogMessageWindow->DeleteAllRows();
    }
    ZnListContext position;
    void *const lastOld = plLogMessages->GetLast(position);
    void *const firstNew = TakeQueue();
    bool write = !bFilterChangePending;
    void *item;
    if (bFilterChangePending) {
      pwndLogMessageWindow->DeleteAllRows();
      item = plLogMessages->GetFirst(position);
    } else {
      item = lastOld != nullptr ? plLogMessages->GetNext(position) : plLogMessages->GetFirst(position);
    }
    bool popped = false;
    std::string batch;
    for (; item != nullptr; item = plLogMessages->GetNext(position)) {
      auto *message = static_cast<ZnLogMessage *>(item);
      if (item == firstNew) write = true;
      if (bWindowEnabled.load() && !popped && PopsUp(message->iFlags, iLoggerFlags.load())) {
        popped = true;
        DisplayLogMessageWindow();
      }
      FilterMessage(message);
      if (write) AppendRecord(batch, message);
    }
    WriteBatch(batch);
  }
  bFilterChangePending = false;
}

void ZnLogger::FilterMessage(ZnLogMessage *message) {
  if (!bFilterEnabled || Passes(aFilters, *message)) {
    message->iListItem = pwndLogMessageWindow->AddRow(RowOf(*message));
  }
}

void ZnLogger::AppendRecord(std::string &batch, ZnLogMessage const *message) {
  znutil::detail::AppendRecordText(batch, StampsOf(message->stTime).record.c_str(), *message);
}

void ZnLogger::WriteBatch(std::string const &batch) {
  if (pofsLogFile == nullptr || batch.empty()) return;
  pofsLogFile->write(batch.data(), static_cast<std::streamsize>(batch.size()));
  pofsLogFile->flush();
}

void ZnLogger::DestroyRecords(ZnDblList *list) {
  if (list == nullptr) return;
  while (void *item = list->DeleteFirst()) delete static_cast<ZnLogMessage *>(item);
  delete list;
}

// After the thread has ended: the messages it never took are written, and
// everything is let go. Opens the file if the thread never got to it.
void ZnLogger::FinalDrain() {
  ThreadInitialize();
  ZnDblList *queue;
  {
    Entered lock(csQueueLock);
    queue = plLogQueue;
    plLogQueue = nullptr;
  }
  std::string batch;
  ZnListContext position;
  for (void *item = queue->GetFirst(position); item != nullptr; item = queue->GetNext(position)) {
    AppendRecord(batch, static_cast<ZnLogMessage *>(item));
  }
  WriteBatch(batch);
  DestroyRecords(queue);
  DestroyRecords(plLogMessages);
  plLogMessages = nullptr;
  delete pofsLogFile;
  pofsLogFile = nullptr;
}
