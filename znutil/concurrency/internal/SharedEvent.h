// The system event behind ZnEvent and the count of ZnEvent objects that
// share it. The last of them to go frees it.
#ifndef ZNUTIL_CONCURRENCY_INTERNAL_SHAREDEVENT_H
#define ZNUTIL_CONCURRENCY_INTERNAL_SHAREDEVENT_H

#include <atomic>
#include <cstdint>

#include <znutil/platform/Event.h>

namespace znutil {
namespace detail {

struct SharedEvent {
  explicit SharedEvent(bool manualReset) : iReferences(1), evtSystem(manualReset) {}

  std::atomic<std::int32_t> iReferences;
  platform::Event evtSystem;
};

/// One more sharer of `event` (which may be null); yields it.
inline SharedEvent *AcquireEvent(SharedEvent *event) {
  if (event != nullptr) event->iReferences.fetch_add(1, std::memory_order_relaxed);
  return event;
}

/// One sharer fewer; the last one frees the event.
inline void ReleaseEvent(SharedEvent *event) {
  if (event != nullptr && event->iReferences.fetch_sub(1, std::memory_order_acq_rel) == 1) delete event;
}

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_CONCURRENCY_INTERNAL_SHAREDEVENT_H
