// The process list from /proc: each numeric entry is a process.
//
// The name is the process's `comm`. The kernel cuts `comm` at 15 bytes, so
// a name of that length is replaced by the base name of the executable when
// that starts with it and can be read (a process of another user hides its
// executable). A process with no `comm` to read gets the executable's base
// name; one with neither has ended and is left out.
#include <znutil/platform/ProcessList.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace znutil {
namespace platform {
namespace {

constexpr std::size_t kCommLimit = 15;

// The id of a /proc entry, or 0 for an entry that is not a process.
DWORD ProcessIdOf(char const *name) {
  DWORD id = 0;
  for (char const *c = name; *c != '\0'; ++c) {
    if (*c < '0' || *c > '9' || id > 0xFFFFFFFFu / 10 - 1) return 0;
    id = id * 10 + static_cast<DWORD>(*c - '0');
  }
  return id;
}

std::string ReadComm(std::string const &folder) {
  int const descriptor = open((folder + "/comm").c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return std::string();
  char buffer[64];
  ssize_t got;
  do {
    got = read(descriptor, buffer, sizeof buffer);
  } while (got < 0 && errno == EINTR);
  close(descriptor);
  std::string comm(buffer, got > 0 ? static_cast<std::size_t>(got) : 0);
  if (!comm.empty() && comm.back() == '\n') comm.pop_back();
  return comm;
}

// The kernel marks the link of an executable whose file was removed (or
// replaced, as an upgrade does) with this suffix; the process keeps its name.
constexpr char kDeletedMark[] = " (deleted)";

std::string ExecutableBaseName(std::string const &folder) {
  char target[4096];
  ssize_t const length = readlink((folder + "/exe").c_str(), target, sizeof target - 1);
  if (length <= 0) return std::string();
  std::string path(target, static_cast<std::size_t>(length));
  std::size_t const mark = path.size() - std::min(path.size(), sizeof kDeletedMark - 1);
  // A file really named so still exists under that name.
  if (path.compare(mark, std::string::npos, kDeletedMark) == 0 && access(path.c_str(), F_OK) != 0) path.erase(mark);
  return path.substr(path.rfind('/') + 1);
}

std::string ProcessName(std::string const &folder) {
  std::string const comm = ReadComm(folder);
  if (!comm.empty() && comm.size() < kCommLimit) return comm;
  std::string const executable = ExecutableBaseName(folder);
  if (comm.empty() || executable.compare(0, comm.size(), comm) == 0) return executable.empty() ? comm : executable;
  return comm;
}

_TASK_LIST Record(DWORD id, std::string const &name) {
  _TASK_LIST task;
  std::memset(&task, 0, sizeof task);
  task.dwProcessId = id;
  name.copy(task.ProcessName, sizeof task.ProcessName - 1);
  return task;
}

}  // namespace

bool ListProcesses(std::vector<_TASK_LIST> *tasks) {
  tasks->clear();
  DIR *proc = opendir("/proc");
  if (proc == nullptr) return false;
  while (dirent const *entry = readdir(proc)) {
    DWORD const id = ProcessIdOf(entry->d_name);
    if (id == 0) continue;
    std::string const name = ProcessName(std::string("/proc/") + entry->d_name);
    if (!name.empty()) tasks->push_back(Record(id, name));
  }
  closedir(proc);
  return true;
}

int EnableDebugPrivilege() { return 1; }

DWORD GetCurrentProcessId() { return static_cast<DWORD>(getpid()); }

}  // namespace platform
}  // namespace znutil
