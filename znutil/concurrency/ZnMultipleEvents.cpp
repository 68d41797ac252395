#include <znutil/concurrency/ZnMultipleEvents.h>

#include <algorithm>

#include <znutil/concurrency/internal/SharedEvent.h>

using znutil::platform::Event;
using znutil::platform::WaitResult;

void ZnMultipleEvents::AddEvent(ZnEvent *event) {
  if (std::find(plEvents.begin(), plEvents.end(), event) == plEvents.end()) plEvents.push_back(event);
}

void ZnMultipleEvents::RemoveEvent(ZnEvent *event) {
  auto const found = std::find(plEvents.begin(), plEvents.end(), event);
  if (found != plEvents.end()) plEvents.erase(found);
}

int ZnMultipleEvents::Wait(ZnULong milliseconds) {
  if (plEvents.empty()) return 0;
  std::vector<Event *> handles;
  handles.reserve(plEvents.size());
  for (ZnEvent *event : plEvents) handles.push_back(event->hEvent != nullptr ? &event->hEvent->evtSystem : nullptr);
  WaitResult const result = Event::WaitForAll(handles.data(), handles.size(), milliseconds);
  return result == WaitResult::kTimeout ? 1 : 0;
}
