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

// True when the text character `c` matches the one pattern item at
// `pattern` (neither a star nor the end); `next` gets the pattern after the
// item. The end of the text matches no item.
bool MatchesItem(char c, char const *pattern, char const **next) {
  if (c == '\0') return false;
  if (*pattern == '[') return InSet(Upper(c), pattern + 1, next);
  *next = pattern + 1;
  return *pattern == '?' || Upper(c) == static_cast<unsigned char>(*pattern);
}

}  // namespace

// Every item but a star takes one character, so on a mismatch only the last
// star needs to take one more: time grows with text times pattern, where
// retrying every earlier star would grow exponentially with their count.
bool MatchTaskName(char const *text, char const *pattern) {
  if (text == nullptr || pattern == nullptr) return false;
  char const *afterStar = nullptr, *starText = nullptr;
  for (;;) {
    char const *next = nullptr;
    if (*pattern == '*') {
      afterStar = ++pattern;
      starText = text;
      continue;
    }
    if (*pattern == '\0' && *text == '\0') return true;
    if (*pattern != '\0' && MatchesItem(*text, pattern, &next)) {
      ++text;
      pattern = next;
      continue;
    }
    if (afterStar == nullptr || *starText == '\0') return false;
    text = ++starText;
    pattern = afterStar;
  }
}
