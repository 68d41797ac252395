#include <znutil/platform/StringTable.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace znutil {
namespace platform {
namespace {

struct Tables {
  std::mutex lock;
  std::map<std::pair<HINSTANCE, UINT>, std::string> texts;
};

Tables &TheTables() {
  static Tables *tables = new Tables;  // used until the very end of the process
  return *tables;
}

}  // namespace

void RegisterStringResource(HINSTANCE instance, UINT id, char const *text) {
  Tables &tables = TheTables();
  std::lock_guard<std::mutex> guard(tables.lock);
  if (text != nullptr)
    tables.texts[{instance, id}] = text;
  else
    tables.texts.erase({instance, id});
}

int LoadStringA(HINSTANCE instance, UINT id, char *buffer, int size) {
  if (buffer == nullptr || size <= 0) return 0;
  Tables &tables = TheTables();
  std::lock_guard<std::mutex> guard(tables.lock);
  auto const found = tables.texts.find({instance, id});
  std::size_t const length =
      found == tables.texts.end() ? 0 : std::min(found->second.size(), static_cast<std::size_t>(size - 1));
  if (length > 0) std::memcpy(buffer, found->second.data(), length);
  buffer[length] = '\0';
  return static_cast<int>(length);
}

}  // namespace platform
}  // namespace znutil
