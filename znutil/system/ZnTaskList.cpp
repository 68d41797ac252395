// The process list over the platform's enumerator, and the task-name
// wildcard match.
#include <znutil/system/ZnTaskList.h>

#include <cctype>

#include <znutil/platform/ProcessList.h>

std::atomic<ZnTaskList::TaskEnumerator> ZnTaskList::GetTaskList{nullptr};
std::atomic<ZnTaskList::PrivilegeRoutine> ZnTaskList::EnableDebugPriv{nullptr};

ZnTaskList::ZnTaskList() : ZnTDblList<ZnTask>(true) {}

ZnTaskList::~ZnTaskList() { DeleteTasks(); }

void ZnTaskList::DeleteTasks() {
  lcCursor = NULL_CONTEXT;
  while (GetCount() > 0) DeleteFirst();
}

void ZnTaskList::Refresh() {
  DeleteTasks();
  if (GetTaskList.load() == nullptr) Initialize();
  std::vector<_TASK_LIST> tasks;
  if (!GetTaskList.load()(&tasks)) return;
  for (_TASK_LIST const &task : tasks) Append(new ZnTask(task.ProcessName, task.dwProcessId));
}

ZnTask *ZnTaskList::First() { return First(lcCursor); }

ZnTask *ZnTaskList::Next() { return Next(lcCursor); }

void ZnTaskList::Initialize() {
  GetTaskList.store(&znutil::platform::ListProcesses);
  EnableDebugPriv.store(&znutil::platform::EnableDebugPrivilege);
  EnableDebugPriv.load()();
}

unsigned int ZnTaskList::GetPid() { return znutil::platform::GetCurrentProcessId(); }

namespace {

int Upper(char c) { return std::toupper(static_cast<unsigned char>(c)); }

// Matches one character against the set after a '['; `end` gets the
// character after the closing ']'. False for an unterminated set.
bool InSet(int c, char const *set, char const **end) {
  bool found = false;
  while (*set != ']') {
    if (*set == '\0') return false;
    unsigned char const low = static_cast<unsigned char>(set[0]);
    unsigned char high = low;
    if (set[1] == '-' && set[2] != ']' && set[2] != '\0') {
      high = static_cast<unsigned char>(set[2]);
      set += 2;
    }
    found = found || (c >= low && c <= high);
    ++set;
  }
  *end = set + 1;
  return found;
}

}  // namespace

bool MatchTaskName(char const *text, char const *pattern) {
  if (text == nullptr || pattern == nullptr) return false;
  for (;; ++text, ++pattern) {
    switch (*pattern) {
      case '\0':
        return *text == '\0';
      case '*':
        for (; *text != '\0'; ++text) {
          if (MatchTaskName(text, pattern + 1)) return true;
        }
        return MatchTaskName(text, pattern + 1);
      case '?':
        if (*text == '\0') return false;
        break;
      case '[': {
        char const *end = nullptr;
        if (*text == '\0' || !InSet(Upper(*text), pattern + 1, &end)) return false;
        pattern = end - 1;
        break;
      }
      default:
        if (Upper(*text) != static_cast<unsigned char>(*pattern)) return false;
    }
  }
}
