#include <znutil/logging/internal/ZnLoggerFrameUI.h>

#include <algorithm>
#include <cstdint>

#include <znutil/logging/ZnLogger.h>
#include <znutil/platform/Clock.h>
#include <znutil/platform/Scheduling.h>
#include <znutil/platform/Thread.h>

namespace platform = znutil::platform;

namespace {

std::int64_t NowMilliseconds() {
  return platform::PerformanceCounter() / (platform::PerformanceFrequency() / 1000);
}

}  // namespace

ZnLoggerFrameUI::ZnLoggerFrameUI() : ZnThread(kSelfDeleting | kStartSuspended), bQuit(false) {}

void ZnLoggerFrameUI::Work() {
  ZnLogger::evtStartup.Signal();
  ZnLogger::CreateFrame();
  ZnLogger::ThreadInitialize();
  PumpMessages();
  ZnLogger::DestroyFrame();
}

void ZnLoggerFrameUI::Quit() {
  bQuit.store(true);
  PostThreadMessageA(WM_QUIT, 0, 0);
}

// Messages are taken as they come; the tick fires whenever its time has
// come, whatever else arrived in between.
void ZnLoggerFrameUI::PumpMessages() {
  std::int64_t next = NowMilliseconds() + kTickMilliseconds;
  while (!bQuit.load()) {
    std::int64_t const wait = std::max<std::int64_t>(0, next - NowMilliseconds());
    platform::ThreadMessage message;
    platform::WaitResult const got = platform::GetThreadMessage(&message, static_cast<std::uint32_t>(wait));
    if (got == platform::WaitResult::kSignalled) {
      if (message.message == WM_QUIT) return;
      continue;
    }
    // Only a thread of the library's own has a queue; without one, wait plainly.
    if (got == platform::WaitResult::kFailed) platform::SleepMilliseconds(static_cast<std::uint32_t>(wait));
    ZnLogger::OnTick();
    next = std::max(next + kTickMilliseconds, NowMilliseconds());
  }
}
