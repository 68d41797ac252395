// ZnLogger: what the logger thread does. The frame, the file, the stored
// messages and the filters are all guarded by csLoggerLock.
#include <znutil/logging/ZnLogger.h>

#include <fstream>
#include <string>

#include <znutil/application/UtilityApp.h>
#include <znutil/logging/ZnLoggerFrame.h>
#include <znutil/logging/internal/Entered.h>
#include <znutil/logging/internal/LoggerSettings.h>
#include <znutil/platform/Directory.h>
#include <znutil/platform/PathText.h>

using znutil::detail::Entered;

namespace {

bool PopsUp(int messageFlags, int loggerFlags) {
  int const either = ZnLogger::kQuiet | ZnLogger::kLoud;
  return (messageFlags & ZnLogger::kLoud) || ((loggerFlags & ZnLogger::kLoud) && !(messageFlags & ZnLogger::kQuiet)) ||
         !((messageFlags | loggerFlags) & either);
}

ZnString LogFileName() {
  ZnString const &app = UtilityApp::AppName();
  return ZnString(app == NULL_STRING ? "LOGGER" : app.Chars()) + ZnString(".log");
}

bool OpenForAppend(std::ofstream &file, ZnString const &path) {
  file.clear();
  file.open(znutil::platform::ToSystemPath(path.Chars()), std::ios::out | std::ios::app | std::ios::binary);
  return file.is_open();
}

// The log folder (when one is known), the current folder, then TEMP. A
// place that cannot be written fails to open and is passed over; when none
// opens, the stream stays closed and writes to it are lost quietly.
void OpenLogFile(std::ofstream &file) {
  ZnString const name = LogFileName();
  ZnString const folder = znutil::detail::LoggerDirectory();
  if (folder != NULL_STRING && OpenForAppend(file, folder ^ name)) return;
  if (OpenForAppend(file, name)) return;
  OpenForAppend(file, ZnString(znutil::platform::TemporaryDirectory().c_str()) ^ name);
}

ZnString Detached(ZnString const &text) { return ZnString(text.Chars()); }

ZnLoggerFrame::Row RowOf(ZnLogger::ZnLogMessage const &message) {
  ZnLoggerFrame::Row row;
  row.fsDate.FormatTime("%#m/%#d/%y", message.stTime);
  row.fsTime.FormatTime("%#I:%M:%S %p", message.stTime);
  row.fsSource = Detached(message.fsSource);
  row.fsCategory = Detached(message.fsCategory);
  std::string text;
  ZnListContext position;
  for (ZnString *line = message.slMessage.First(position); line != nullptr; line = message.slMessage.Next(position)) {
    if (!text.empty()) text += ' ';
    text += line->Chars();
  }
  row.fsMessage = ZnString(text.c_str());
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
    bool wrote = false;
    for (; item != nullptr; item = plLogMessages->GetNext(position)) {
      auto *message = static_cast<ZnLogMessage *>(item);
      if (item == firstNew) write = true;
      if (bWindowEnabled.load() && !popped && PopsUp(message->iFlags, iLoggerFlags.load())) {
        popped = true;
        DisplayLogMessageWindow();
      }
      FilterMessage(message);
      if (pofsLogFile != nullptr && write) {
        WriteRecord(message);
        wrote = true;
      }
    }
    if (wrote) pofsLogFile->flush();
  }
  bFilterChangePending = false;
}

void ZnLogger::FilterMessage(ZnLogMessage *message) {
  bool show = true;
  for (LoggerFilter const &filter : aFilters) {
    if (!bFilterEnabled) break;
    if (filter.iFilterType <= kFilterError) {
      if (message->iType == filter.iFilterType && !filter.bEnabled) show = false;
    } else if (filter.bEnabled && filter.iFilterType != kFilterMessage) {
      ZnString const &field = filter.iFilterType == kFilterSource ? message->fsSource : message->fsCategory;
      if (!show || field.CaseCompare(filter.fsText) != 0) show = false;
    } else if (filter.bEnabled && show) {
      show = AnyLineContains(message->slMessage, filter.fsText);
    }
  }
  if (show) message->iListItem = pwndLogMessageWindow->AddRow(RowOf(*message));
}

void ZnLogger::WriteRecord(ZnLogMessage const *message) {
  ZnString const text = message->FileText();
  pofsLogFile->write(text.Chars(), text.Length());
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
  ZnListContext position;
  for (void *item = queue->GetFirst(position); item != nullptr; item = queue->GetNext(position)) {
    WriteRecord(static_cast<ZnLogMessage *>(item));
  }
  DestroyRecords(queue);
  DestroyRecords(plLogMessages);
  plLogMessages = nullptr;
  pofsLogFile->flush();
  delete pofsLogFile;
  pofsLogFile = nullptr;
}
