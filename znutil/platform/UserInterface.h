// The few dialogs the library shows, for a process that has no windows,
// and the user-interface set-up calls, which have nothing to set up.
//
// MessageBoxA writes its text to standard error. A folder chooser exists
// only if the host installs one:
//
//   znutil::platform::SetFolderChooser([](HWND, std::string const &start, std::string &chosen) {
//     chosen = AskTheUser(start);
//     return !chosen.empty();
//   });
#ifndef ZNUTIL_PLATFORM_USERINTERFACE_H
#define ZNUTIL_PLATFORM_USERINTERFACE_H

#include <string>

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

#define MB_OK 0x0u
#define MB_ICONERROR 0x10u
#define IDOK 1

namespace znutil {
namespace platform {

/// Writes "caption: text" (or the text alone when there is no caption) and
/// a line feed to standard error; returns IDOK.
int MessageBoxA(HWND owner, char const *text, char const *caption, UINT style);

/// A host's folder chooser: gets the owner and the folder to start in
/// (library form), writes the chosen folder and returns true, or returns
/// false when the user cancels.
typedef bool (*FolderChooser)(HWND owner, std::string const &start, std::string &chosen);

/// Installs the chooser that the library's folder dialog calls and returns
/// the one it replaces; null removes it, and the dialog is then always
/// cancelled.
ZNUTIL_API FolderChooser SetFolderChooser(FolderChooser chooser);

/// The file-open dialog used to pick a folder: calls the installed chooser
/// with the current directory and, as the Windows dialog does while the
/// user navigates, makes the chosen folder current. 1 when a folder was
/// chosen and made current, 0 when cancelled or when there is no chooser.
int GetOpenFileNameA(HWND owner);

/// Nothing to set up; counted.
void InitCommonControls();
/// Nothing to set up; counted. Returns S_OK.
HRESULT OleInitialize(void *reserved);
/// Nothing to tear down; counted.
void OleUninitialize();

/// How often each set-up call was made in this process, so that tests can
/// see which calls the library makes.
struct UserInterfaceCalls {
  unsigned long initCommonControls;
  unsigned long oleInitialize;
  unsigned long oleUninitialize;
};
ZNUTIL_API UserInterfaceCalls CountUserInterfaceCalls();

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_USERINTERFACE_H
