// ZnLoggerFrame: the rows, title and state of the headless logger window.
#include <znutil/logging/ZnLoggerFrame.h>

#include <znutil/logging/ZnLogger.h>
#include <znutil/concurrency/internal/Entered.h>

using znutil::detail::Entered;

namespace {

// Strings share a plain count: what leaves the logger's lock is a copy
// that shares nothing.
ZnString Detached(ZnString const &text) { return ZnString(text.Chars()); }

ZnLoggerFrame::Row Detached(ZnLoggerFrame::Row const &row) {
  return ZnLoggerFrame::Row{Detached(row.fsDate), Detached(row.fsTime), Detached(row.fsSource),
                            Detached(row.fsCategory), Detached(row.fsMessage)};
}

}  // namespace

ZnLoggerFrame::ZnLoggerFrame(ZnString const &title, bool icon)
    : fsTitle(title), bVisible(false), bIconic(false), bIcon(icon), iActivations(0) {}

ZnLoggerFrame::~ZnLoggerFrame() {}

bool ZnLoggerFrame::Capture(Snapshot *out) {
  Entered logger(ZnLogger::csLoggerLock);
  ZnLoggerFrame const *frame = ZnLogger::pwndLogMessageWindow;
  if (frame == nullptr) return false;
  out->fsTitle = Detached(frame->fsTitle);
  out->bVisible = frame->bVisible;
  out->bIconic = frame->bIconic;
  out->bIcon = frame->bIcon;
  out->iActivations = frame->iActivations;
  out->rows.clear();
  for (Row const &row : frame->vRows) out->rows.push_back(Detached(row));
  return true;
}

bool ZnLoggerFrame::Minimize() {
  Entered logger(ZnLogger::csLoggerLock);
  ZnLoggerFrame *frame = ZnLogger::pwndLogMessageWindow;
  if (frame == nullptr) return false;
  frame->bIconic = true;
  return true;
}

int ZnLoggerFrame::AddRow(Row const &row) {
  vRows.push_back(row);
  return static_cast<int>(vRows.size()) - 1;
}

void ZnLoggerFrame::DeleteAllRows() { vRows.clear(); }

void ZnLoggerFrame::SetTitle(ZnString const &title) { fsTitle = title; }

void ZnLoggerFrame::SetIcon(bool shown) { bIcon = shown; }

void ZnLoggerFrame::BringUp() {
  bIconic = false;
  bVisible = true;
  ++iActivations;
}

void ZnLoggerFrame::Hide() { bVisible = false; }
