#include <znutil/concurrency/ZnMultipleEvents.h>

#include <vector>

#include <znutil/concurrency/internal/SharedEvent.h>

using znutil::platform::Event;
using znutil::platform::WaitResult;

void ZnMultipleEvents::AddEvent(ZnEvent *event) {
  ZnListContext found = plEvents.Find(event);
  if (plEvents.GetCurrent(found) == nullptr) plEvents.Append(event);
}

void ZnMultipleEvents::RemoveEvent(ZnEvent *event) {
  ZnListContext found = plEvents.Find(event);
  plEvents.ZnDblList::Delete(found);
}

int ZnMultipleEvents::Wait(ZnULong milliseconds) {
  if (plEvents.GetCount() == 0) return 0;
  std::vector<Event *> handles;
  handles.reserve(static_cast<std::size_t>(plEvents.GetCount()));
  ZnListContext position;
  for (ZnEvent *event = plEvents.First(position); event != nullptr; event = plEvents.Next(position))
    handles.push_back(event->hEvent != nullptr ? &event->hEvent->evtSystem : nullptr);
  WaitResult const result = Event::WaitForAll(handles.data(), handles.size(), milliseconds);
  return result == WaitResult::kTimeout ? 1 : 0;
}
