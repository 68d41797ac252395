// ZnLoggerFrame: the logger's window on a system without one. The logger
// thread makes it at its start and it lives until ZnLogger::Shutdown. It
// holds what a user would see: the rows (Date, Time, Source, Category,
// Message), the title, whether it is shown, hidden or iconic, and whether
// its notification icon is there.
//
//   ZnLoggerFrame::Snapshot seen;
//   if (ZnLoggerFrame::Capture(&seen) && seen.bVisible) {
//     for (auto const &row : seen.rows) std::puts(row.fsMessage);
//   }
//
// Every public member is safe from any thread: it reads or changes the
// frame of the running logger under the logger's lock.
#ifndef ZNUTIL_LOGGING_ZNLOGGERFRAME_H
#define ZNUTIL_LOGGING_ZNLOGGERFRAME_H

#include <deque>
#include <vector>

#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnLoggerFrame {
 public:
  /// One row of the list. A message's lines stand in fsMessage joined by
  /// one blank.
  struct Row {
    ZnString fsDate;
    ZnString fsTime;
    ZnString fsSource;
    ZnString fsCategory;
    ZnString fsMessage;
  };

  /// A copy of everything the frame shows.
  struct Snapshot {
    ZnString fsTitle;
    bool bVisible = false;
    bool bIconic = false;
    bool bIcon = false;
    /// How often the frame was brought to the foreground.
    int iActivations = 0;
    std::vector<Row> rows;
  };

  /// Copies the frame into `out`; false, leaving `out` alone, while the
  /// logger has no frame.
  static bool Capture(Snapshot *out);
  /// Makes the frame iconic, as a user's click would; false while the
  /// logger has no frame.
  static bool Minimize();

  virtual ~ZnLoggerFrame();

 private:
  friend class ZnLogger;

  explicit ZnLoggerFrame(ZnString const &title, bool icon);
  ZnLoggerFrame(ZnLoggerFrame const &) = delete;
  ZnLoggerFrame &operator=(ZnLoggerFrame const &) = delete;

  /// Appends a row and yields its index.
  int AddRow(Row const &row);
  void DeleteAllRows();
  void SetTitle(ZnString const &title);
  void SetIcon(bool shown);
  /// Restores an iconic frame, else shows it; then raises it.
  void BringUp();
  void Hide();
  bool IsVisible() const { return bVisible; }

  ZnString fsTitle;
  bool bVisible;
  bool bIconic;
  bool bIcon;
  int iActivations;
  std::deque<Row> vRows;  // a deque: rows never move as the list grows
};

#endif  // ZNUTIL_LOGGING_ZNLOGGERFRAME_H
