// The processes of the machine, as the process list enumerates them.
//
//   std::vector<_TASK_LIST> tasks;
//   if (znutil::platform::ListProcesses(&tasks))
//     for (auto const &task : tasks) printf("%u %s\n", task.dwProcessId, task.ProcessName);
#ifndef ZNUTIL_PLATFORM_PROCESSLIST_H
#define ZNUTIL_PLATFORM_PROCESSLIST_H

#include <vector>

#include <znutil/platform/WinTypes.h>

/// One process as an enumerator gives it, in the published field order.
struct _TASK_LIST {
  DWORD dwProcessId;
  DWORD dwInheritedFromProcessId;  ///< nothing writes or reads it
  BOOL flags;                      ///< 0
  HWND hwnd;                       ///< no windows here: null
  char ProcessName[MAX_PATH];
  char WindowTitle[64];
};

namespace znutil {
namespace platform {

/// Replaces `tasks` with one record per running process: its id and its
/// name, in the order of the system. A process that ends while it is read
/// is left out. False, with `tasks` empty, when the processes cannot be
/// listed at all.
bool ListProcesses(std::vector<_TASK_LIST> *tasks);

/// The debug privilege has no counterpart: always 1.
int EnableDebugPrivilege();

/// The calling process's id.
DWORD GetCurrentProcessId();

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_PROCESSLIST_H
