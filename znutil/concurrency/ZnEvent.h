// ZnEvent: a system event, manual or auto reset, that threads wait on.
//
//   ZnEvent done(false);               // auto reset
//   // worker thread:  ...; done.Signal();
//   if (done.Wait(5000) == 1) { /* timed out */ }
//
// Wait yields 1 for a timeout and 0 otherwise, so 0 also stands for a wait
// that failed. Copies are shallow: they share one system event, which
// lives until the last object sharing it is destroyed.
#ifndef ZNUTIL_CONCURRENCY_ZNEVENT_H
#define ZNUTIL_CONCURRENCY_ZNEVENT_H

#include <atomic>

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace detail {
struct SharedEvent;
}  // namespace detail
}  // namespace znutil

class ZNUTIL_API ZnEvent {
 public:
  /// A new unsignalled event; a manual-reset one stays signalled until
  /// Reset, an auto-reset one releases a single waiter per Signal.
  explicit ZnEvent(bool bManualReset);
  /// Shares the other's system event and takes its waiting flag.
  ZnEvent(ZnEvent const &other);
  ZnEvent &operator=(ZnEvent const &other);
  virtual ~ZnEvent();

  /// Signals the event; false if there is no system event.
  bool Signal();
  /// Makes the event unsignalled; false if there is no system event.
  bool Reset();
  /// Releases the threads waiting now (one for auto reset) and leaves the
  /// event unsignalled; false if there is no system event.
  bool Pulse();

  /// Waits for the event for at most `milliseconds` (INFINITE for ever).
  /// Yields 1 if and only if the wait timed out: 0 means signalled, and
  /// also failed.
  int Wait(ZnULong milliseconds);

  /// True while a thread stands in Wait on this object. All such threads
  /// share the one flag and the first to leave clears it: deliberate.
  bool IsWaiting() const { return bWaiting.load(); }

 private:
  friend class ZnMultipleEvents;

  znutil::detail::SharedEvent *hEvent;
  std::atomic<bool> bWaiting;
};

#endif  // ZNUTIL_CONCURRENCY_ZNEVENT_H
