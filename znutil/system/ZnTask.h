// ZnTask: one process of a process list snapshot, its name and its id.
//
//   ZnTask task("sleep", 4242);
//   task.ProcessName();   // "sleep"
#ifndef ZNUTIL_SYSTEM_ZNTASK_H
#define ZNUTIL_SYSTEM_ZNTASK_H

#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnTask {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  ZnTask(ZnString const &name, unsigned int id) : fsProcessName(name), udwProcessId(id) {}
  ZnTask(ZnTask const &other) = default;
  ZnTask &operator=(ZnTask const &other) = default;
  virtual ~ZnTask() = default;

  /// The process's name, as the system gives it (no folder).
  ZnString const &ProcessName() const { return fsProcessName; }
  /// The process id.
  unsigned int Id() const { return udwProcessId; }

 private:
  ZnString fsProcessName;
  ZnULong udwProcessId;
};

#endif  // ZNUTIL_SYSTEM_ZNTASK_H
