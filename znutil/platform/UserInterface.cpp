// Message boxes on standard error, the host's folder chooser, and the
// counted set-up calls.
#include <znutil/platform/UserInterface.h>

#include <atomic>
#include <cstdio>

#include <znutil/platform/Directory.h>
#include <znutil/platform/PathText.h>

namespace znutil {
namespace platform {
namespace {

std::atomic<FolderChooser> installedChooser{nullptr};
std::atomic<unsigned long> initCommonControlsCalls{0};
std::atomic<unsigned long> oleInitializeCalls{0};
std::atomic<unsigned long> oleUninitializeCalls{0};

}  // namespace

int MessageBoxA(HWND, char const *text, char const *caption, UINT) {
  if (caption != nullptr && caption[0] != '\0') std::fprintf(stderr, "%s: ", caption);
  std::fprintf(stderr, "%s\n", text != nullptr ? text : "");
  return IDOK;
}

FolderChooser SetFolderChooser(FolderChooser chooser) { return installedChooser.exchange(chooser); }

int GetOpenFileNameA(HWND owner) {
  FolderChooser const chooser = installedChooser.load();
  std::string chosen;
  if (chooser == nullptr || !chooser(owner, CurrentDirectory(), chosen)) return 0;
  return SetCurrentDirectoryA(chosen.c_str()) ? 1 : 0;
}

void InitCommonControls() { ++initCommonControlsCalls; }

HRESULT OleInitialize(void *) {
  ++oleInitializeCalls;
  return S_OK;
}

void OleUninitialize() { ++oleUninitializeCalls; }

UserInterfaceCalls CountUserInterfaceCalls() {
  return {initCommonControlsCalls.load(), oleInitializeCalls.load(), oleUninitializeCalls.load()};
}

}  // namespace platform
}  // namespace znutil
