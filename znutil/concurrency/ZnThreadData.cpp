// ZnThread's per-thread data. Each thread keeps its record in a
// thread_local slot whose destructor is the thread's detach: it runs the
// detach work of the application layer, then destroys a record that is
// left when the thread ends, whoever started the thread.
//
// The slot "index" of the original is kept as a number that names one
// allocation of the slot: records made under an earlier allocation read as
// absent after ReleaseTls, as the values of a freed and reallocated Windows
// slot do, and are destroyed instead of being lost.
#include <znutil/concurrency/ZnThread.h>

#include <znutil/concurrency/internal/ZnThreadRecord.h>
#include <znutil/memory/ZnFixedBlockAllocator.h>
#include <znutil/platform/ThreadLocal.h>

using znutil::detail::ZnThreadRecord;

namespace {

std::atomic<void (*)()> detachWork{nullptr};

class ThreadDataSlot {
 public:
  ~ThreadDataSlot() {
    if (void (*work)() = detachWork.load()) work();
    Destroy();
    if (bHeapGivenBack) ZnFixedBlockAllocator::Shutdown();
  }

  /// The record, if it belongs to the slot allocation `index`.
  ZnThreadRecord *Get(long index) const { return index != -1 && iIndex == index ? pRecord : nullptr; }

  void Set(ZnThreadRecord *record, long index) {
    Destroy();
    pRecord = record;
    iIndex = index;
  }

  void Destroy() {
    delete pRecord;
    pRecord = nullptr;
  }

  bool bHeapGivenBack = false;
  /// Data was made on this thread once: the attach has happened.
  bool bAttached = false;

 private:
  ZnThreadRecord *pRecord = nullptr;
  long iIndex = -1;
};

ZNUTIL_THREAD_LOCAL ThreadDataSlot tlsThreadData;

std::atomic<long> iNextTlsIndex{0};

}  // namespace

std::atomic<long> ZnThread::iTlsIndex{-1};

void znutil::detail::MarkHeapGivenBack() { tlsThreadData.bHeapGivenBack = true; }

void znutil::detail::AttachThread() {
  if (!tlsThreadData.bAttached) ZnThread::InitializeThreadData(nullptr);
}

void znutil::detail::SetThreadDetachWork(void (*work)()) { detachWork.store(work); }

void ZnThread::AllocateTls() {
  if (iTlsIndex.load() != -1) return;
  long unallocated = -1;
  iTlsIndex.compare_exchange_strong(unallocated, iNextTlsIndex.fetch_add(1));
}

void ZnThread::InitializeThreadData(ZnThread *thread) {
  AllocateTls();
  tlsThreadData.bAttached = true;
  long const index = iTlsIndex.load();
  if (ZnThreadRecord *record = tlsThreadData.Get(index)) {
    record->pThread = thread;
    return;
  }
  tlsThreadData.Set(new ZnThreadRecord(thread), index);
}

void ZnThread::DestroyThreadData() {
  if (iTlsIndex.load() != -1) tlsThreadData.Destroy();
}

void ZnThread::ReleaseTls() {
  DestroyThreadData();
  iTlsIndex.store(-1);
}

ZnThread *ZnThread::GetThread() {
  ZnThreadRecord *record = tlsThreadData.Get(iTlsIndex.load());
  return record != nullptr ? record->pThread : nullptr;
}

void *ZnThread::GetThreadData(ZnString const &name) {
  ZnThreadRecord *record = tlsThreadData.Get(iTlsIndex.load());
  return record != nullptr ? record->dictThreadData.Find(name) : nullptr;
}

bool ZnThread::AllocThreadData(ZnString const &name, void *value) {
  ZnThreadRecord *record = tlsThreadData.Get(iTlsIndex.load());
  return record != nullptr && record->dictThreadData.Add(name, value) == nullptr;
}

void ZnThread::FreeThreadData(ZnString const &name) {
  if (ZnThreadRecord *record = tlsThreadData.Get(iTlsIndex.load())) record->dictThreadData.Delete(name);
}
