// The per-thread OLE latch and the thread hooks of the application layer.
//
// The latch is one int per thread under the thread data "OleInitialize".
// Its storage is a thread_local int rather than a heap int that the thread
// data would never free; a thread whose data was destroyed finds no flag
// and starts again at 0, as with a freshly allocated one.
#include <znutil/application/UtilityApp.h>

#include <znutil/concurrency/ZnThread.h>
#include <znutil/concurrency/internal/ZnThreadRecord.h>
#include <znutil/platform/UserInterface.h>

namespace {

thread_local int iOleInitialized = 0;

// A fresh name for each use: string counts are plain, so one name shared by
// all threads would be counted by several of them at once.
char const kOleInitializeName[] = "OleInitialize";

// Every thread that ends gives OLE back, as the detach of the library does.
[[maybe_unused]] bool const bDetachWorkSet =
    (znutil::detail::SetThreadDetachWork(&UtilityApp::OleUninitialize), true);

}  // namespace

long UtilityApp::OleInitialize() {
  znutil::detail::AttachThread();
  ZnString const name(kOleInitializeName);
  auto *flag = static_cast<int *>(ZnThread::GetThreadData(name));
  if (flag == nullptr) {
    flag = &iOleInitialized;
    *flag = 0;
    ZnThread::AllocThreadData(name, flag);
  }
  if (*flag != 0) return 1;
  *flag = 1;
  return znutil::platform::OleInitialize(nullptr);
}

void UtilityApp::OleUninitialize() {
  if (ZnThread::GetThread() == nullptr) return;
  if (ZnThread::GetThreadData(ZnString(kOleInitializeName)) != nullptr) znutil::platform::OleUninitialize();
}
