// ZnTaskList: a snapshot of the processes running on the machine.
//
//   ZnTaskList tasks;                  // empty until the first Refresh
//   tasks.Refresh();
//   for (ZnTask *task = tasks.First(); task != nullptr; task = tasks.Next())
//     if (MatchTaskName(task->ProcessName(), "SLEEP*")) ...
//
// The list owns its tasks; Refresh replaces them all, so pointers taken
// before it are gone after it. An enumeration that fails leaves the list
// empty. No locks: one thread at a time.
#ifndef ZNUTIL_SYSTEM_ZNTASKLIST_H
#define ZNUTIL_SYSTEM_ZNTASKLIST_H

#include <atomic>
#include <vector>

#include <znutil/containers/ZnListContext.h>
#include <znutil/containers/ZnTDblList.h>
#include <znutil/platform/Export.h>
#include <znutil/system/ZnTask.h>

struct _TASK_LIST;

class ZNUTIL_API ZnTaskList : public ZnTDblList<ZnTask> {
 public:
  using ZnTDblList<ZnTask>::First;
  using ZnTDblList<ZnTask>::Next;

  /// An empty owning list; it does not enumerate.
  ZnTaskList();
  ZnTaskList(ZnTaskList const &) = delete;
  ZnTaskList &operator=(ZnTaskList const &) = delete;
  /// Deletes the tasks with the list.
  ~ZnTaskList() override;

  /// Replaces the contents with a fresh snapshot, in the system's order.
  /// Sets up the enumerator first if Initialize has not run.
  void Refresh();
  /// Moves the cursor to the first task; null when empty.
  ZnTask *First();
  /// Advances the cursor; null at the end and after it.
  ZnTask *Next();

  /// Chooses the enumerator and the debug-privilege routine and runs the
  /// latter. The library's start calls it; calling it again is harmless.
  static void Initialize();
  /// The calling process's id.
  static unsigned int GetPid();

 private:
  typedef bool (*TaskEnumerator)(std::vector<_TASK_LIST> *tasks);
  typedef int (*PrivilegeRoutine)();

  void DeleteTasks();

  ZnListContext lcCursor;

  static std::atomic<TaskEnumerator> GetTaskList;
  static std::atomic<PrivilegeRoutine> EnableDebugPriv;
};

/// Matches a process name against a wildcard pattern: `*` any run, `?` any
/// one character, `[a-z...]` one character of a set. Each character of
/// `text` is compared in upper case with the pattern as given, so a
/// pattern must be written in upper case to match: deliberate. A null text
/// or pattern matches nothing.
ZNUTIL_API bool MatchTaskName(char const *text, char const *pattern);

#endif  // ZNUTIL_SYSTEM_ZNTASKLIST_H
