#include <znutil/concurrency/ZnEvent.h>

#include <znutil/concurrency/internal/SharedEvent.h>

using znutil::detail::AcquireEvent;
using znutil::detail::ReleaseEvent;
using znutil::detail::SharedEvent;
using znutil::platform::WaitResult;

ZnEvent::ZnEvent(bool bManualReset) : hEvent(new SharedEvent(bManualReset)), bWaiting(false) {}

ZnEvent::ZnEvent(ZnEvent const &other) : hEvent(AcquireEvent(other.hEvent)), bWaiting(other.bWaiting.load()) {}

ZnEvent &ZnEvent::operator=(ZnEvent const &other) {
  SharedEvent *const previous = hEvent;
  hEvent = AcquireEvent(other.hEvent);
  ReleaseEvent(previous);
  bWaiting.store(other.bWaiting.load());
  return *this;
}

ZnEvent::~ZnEvent() {
  ReleaseEvent(hEvent);
  hEvent = nullptr;
}

namespace {

// Runs a waking operation on the system event. A waiter that it releases
// may destroy the ZnEvent at once, so the system event is held until the
// operation is over.
bool Wake(SharedEvent *shared, void (znutil::platform::Event::*operation)()) {
  SharedEvent *event = AcquireEvent(shared);
  if (event == nullptr) return false;
  (event->evtSystem.*operation)();
  ReleaseEvent(event);
  return true;
}

}  // namespace

bool ZnEvent::Signal() { return Wake(hEvent, &znutil::platform::Event::Set); }

bool ZnEvent::Reset() {
  if (hEvent == nullptr) return false;
  hEvent->evtSystem.Reset();
  return true;
}

bool ZnEvent::Pulse() { return Wake(hEvent, &znutil::platform::Event::Pulse); }

int ZnEvent::Wait(ZnULong milliseconds) {
  bWaiting.store(true);
  WaitResult const result = hEvent != nullptr ? hEvent->evtSystem.Wait(milliseconds) : WaitResult::kFailed;
  bWaiting.store(false);
  return result == WaitResult::kTimeout ? 1 : 0;
}
