// ZnMultipleEvents: a rendezvous of events. Wait returns when all of them
// are signalled at the same moment, not when any one is.
//
//   ZnMultipleEvents all;
//   all.AddEvent(&loaded);
//   all.AddEvent(&parsed);
//   if (all.Wait(INFINITE) == 0) { /* both happened (or the wait failed) */ }
//
// The set holds pointers and never owns or deletes the events.
#ifndef ZNUTIL_CONCURRENCY_ZNMULTIPLEEVENTS_H
#define ZNUTIL_CONCURRENCY_ZNMULTIPLEEVENTS_H

#include <znutil/concurrency/ZnEvent.h>
#include <znutil/containers/ZnTDblList.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

class ZNUTIL_API ZnMultipleEvents {
 public:
  ZnMultipleEvents() = default;
  ZnMultipleEvents(ZnMultipleEvents const &) = delete;
  ZnMultipleEvents &operator=(ZnMultipleEvents const &) = delete;
  /// Forgets the events; they stay alive.
  virtual ~ZnMultipleEvents() { plEvents.Clear(); }

  /// Appends `event` unless this very pointer is already in the set.
  void AddEvent(ZnEvent *event);
  /// Takes `event` out of the set; nothing happens if it is not there.
  void RemoveEvent(ZnEvent *event);

  /// Waits for all the events, in the order added, for at most
  /// `milliseconds`; auto-reset ones are consumed together. Yields 1 on a
  /// timeout, else 0: also 0 at once for an empty set, and 0 for a wait
  /// that fails (more than 64 events, or two objects sharing one system
  /// event). The events' waiting flags are not touched.
  int Wait(ZnULong milliseconds);

 private:
  ZnTDblList<ZnEvent> plEvents;  // not owning
};

#endif  // ZNUTIL_CONCURRENCY_ZNMULTIPLEEVENTS_H
