// ZnLoggerFrameUI: the logger thread. It owns the frame, makes its own tick
// every 100 milliseconds, and on each tick hands the title over and drains
// the queue. It ends on WM_QUIT (or Quit) and deletes itself.
#ifndef ZNUTIL_LOGGING_INTERNAL_ZNLOGGERFRAMEUI_H
#define ZNUTIL_LOGGING_INTERNAL_ZNLOGGERFRAMEUI_H

#include <atomic>

#include <znutil/concurrency/ZnThread.h>
#include <znutil/concurrency/ZnThreadWork.h>

class ZnLoggerFrameUI : public ZnThread, public ZnThreadWork {
 public:
  /// The period of the tick.
  static constexpr long kTickMilliseconds = 100;

  /// A suspended, self-deleting thread: the caller assigns it its work and
  /// resumes it once this object is whole.
  ZnLoggerFrameUI();

  /// Runs on the thread: the frame, the log file, then ticks until quit.
  void Work() override;
  /// Asks the thread to leave its loop, even before its id is known.
  void Quit();

 private:
  void PumpMessages();

  std::atomic<bool> bQuit;
};

#endif  // ZNUTIL_LOGGING_INTERNAL_ZNLOGGERFRAMEUI_H
