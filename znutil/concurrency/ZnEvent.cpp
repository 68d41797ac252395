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

bool ZnEvent::Signal() {
  if (hEvent == nullptr) return false;
  hEvent->evtSystem.Set();
  return true;
}

bool ZnEvent::Reset() {
  if (hEvent == nullptr) return false;
  hEvent->evtSystem.Reset();
  return true;
}

bool ZnEvent::Pulse() {
  if (hEvent == nullptr) return false;
  hEvent->evtSystem.Pulse();
  return true;
}

int ZnEvent::Wait(ZnULong milliseconds) {
  bWaiting.store(true);
  WaitResult const result = hEvent != nullptr ? hEvent->evtSystem.Wait(milliseconds) : WaitResult::kFailed;
  bWaiting.store(false);
  return result == WaitResult::kTimeout ? 1 : 0;
}
