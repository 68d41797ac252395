// Thread message queues. Every thread that the library starts has one from
// its start to its end, found by thread id in one registry; other threads
// have none, and posting to them fails.
#include <znutil/platform/Thread.h>

#include <unordered_map>

#include <znutil/platform/linux/PosixSync.h>
#include <znutil/platform/linux/ThreadRecord.h>

namespace znutil {
namespace platform {
namespace {

pthread_mutex_t registryLock = PTHREAD_MUTEX_INITIALIZER;

// Never destroyed: threads may still end while the process exits.
std::unordered_map<DWORD, ThreadRecord *> &Registry() {
  static auto *registry = new std::unordered_map<DWORD, ThreadRecord *>;
  return *registry;
}

}  // namespace

void RegisterQueue(ThreadRecord *record) {
  Locked locked(registryLock);
  Registry()[record->id] = record;
}

void UnregisterQueue(ThreadRecord *record) {
  Locked locked(registryLock);
  auto found = Registry().find(record->id);
  if (found != Registry().end() && found->second == record) Registry().erase(found);
}

bool PostThreadMessageA(DWORD threadId, UINT message, WPARAM wParam, LPARAM lParam) {
  Locked registry(registryLock);
  auto found = Registry().find(threadId);
  if (found == Registry().end()) return false;
  ThreadRecord &record = *found->second;
  Locked queue(record.queueLock);
  record.queue.push_back(ThreadMessage{message, wParam, lParam});
  pthread_cond_signal(&record.queueChanged);
  return true;
}

WaitResult GetThreadMessage(ThreadMessage *message, std::uint32_t milliseconds) {
  ThreadRecord *record = CurrentRecord();
  if (record == nullptr || !record->ownQueue) return WaitResult::kFailed;
  Deadline const deadline(milliseconds);
  Locked locked(record->queueLock);
  bool inTime = milliseconds != 0;
  while (record->queue.empty() && inTime) inTime = deadline.Sleep(record->queueChanged, record->queueLock);
  if (record->queue.empty()) return WaitResult::kTimeout;
  *message = record->queue.front();
  record->queue.pop_front();
  return WaitResult::kSignalled;
}

}  // namespace platform
}  // namespace znutil
