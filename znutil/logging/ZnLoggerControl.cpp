// ZnLogger: the filters, the title and the frame, as any thread reaches them.
#include <znutil/logging/ZnLogger.h>

#include <znutil/logging/ZnLoggerFrame.h>
#include <znutil/concurrency/internal/Entered.h>

using znutil::detail::Entered;

void ZnLogger::Filter(int index, bool enable, ZnString const &text) {
  if (index < 0 || index >= kFilterCount) return;
  Entered logger(csLoggerLock);
  LoggerFilter &filter = aFilters[index];
  bool const textMatters = index >= kFilterSource;
  if (filter.bEnabled != enable || (textMatters && filter.fsText != text)) bFilterChangePending = true;
  filter.bEnabled = enable;
  filter.fsText = ZnString(text.Chars());  // a copy of its own for the logger thread
  bFilterEnabled = false;
  for (LoggerFilter const &each : aFilters) {
    bool const departs = each.iFilterType < kFilterSource ? !each.bEnabled : each.bEnabled;
    bFilterEnabled = bFilterEnabled || departs;
  }
}

ZnLogger::LoggerFilter const *ZnLogger::QueryFilter(int index) { return &aFilters[index]; }

// The title is stored under the queue's lock, which the tick takes to read
// it; the word says that there is something to read.
void ZnLogger::SuggestLogWindowTitle(ZnString const &title) {
  {
    Entered queue(csQueueLock);
    fsLogWindowTitle = ZnString(title.Chars());
  }
  awLogWindowTitleSet.Set(1);
}

void ZnLogger::ClearWindow() {
  Entered logger(csLoggerLock);
  bClearWindowPending = true;
}

HWND ZnLogger::LoggerWindow() {
  Entered logger(csLoggerLock);
  return pwndLogMessageWindow;
}

void ZnLogger::EnableWindowOutput(bool enable) {
  Entered logger(csLoggerLock);
  bWindowEnabled.store(enable);
  if (pwndLogMessageWindow != nullptr) pwndLogMessageWindow->SetIcon(enable);
}

void ZnLogger::ShowLoggerWindow(bool show) {
  Entered logger(csLoggerLock);
  if (pwndLogMessageWindow == nullptr) return;
  if (show) {
    pwndLogMessageWindow->BringUp();
  } else {
    pwndLogMessageWindow->Hide();
  }
}

bool ZnLogger::IsLoggerWindowVisible() {
  Entered logger(csLoggerLock);
  return pwndLogMessageWindow != nullptr && pwndLogMessageWindow->IsVisible();
}
