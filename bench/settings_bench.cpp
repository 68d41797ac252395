// A profile read in a hot loop: UtilityApp::GetProfileIntA on a started
// library, against the map under a read lock that a user would write by
// hand. Both hold 1,000 sections of 20 integer entries; each read picks the
// next key of a fixed walk. Run with 1 and 2 threads.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <shared_mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include <benchmark/benchmark.h>

#include <znutil/application/UtilityApp.h>

namespace {

constexpr int kSections = 1000;
constexpr int kEntries = 20;

struct Key {
  std::string joined;  // section, line feed, entry: the map's key
  ZnString section, entry;
};

std::vector<Key> const &Keys() {
  static std::vector<Key> const keys = [] {
    std::vector<Key> made;
    for (int s = 0; s < kSections; ++s) {
      for (int e = 0; e < kEntries; ++e) {
        std::string section = "Section" + std::to_string(s), entry = "Entry" + std::to_string(e);
        made.push_back({section + '\n' + entry, ZnString(section.c_str()), ZnString(entry.c_str())});
      }
    }
    return made;
  }();
  return keys;
}

// The library, started once for the whole run on a profile in a scratch
// folder, with every key written.
void StartLibrary() {
  static bool const started = [] {
    std::filesystem::path const folder = std::filesystem::temp_directory_path() / "znutil-settings-bench";
    std::filesystem::create_directories(folder);
    setenv("ZNUTIL_SYSTEM_DIR", folder.c_str(), 1);
    InitializeUtilityLibrary("", (folder / "bench.cfg").c_str(), true);
    UtilityApp const app;
    int value = 0;
    for (Key const &key : Keys()) app.WriteProfileInt(key.section, key.entry, value++);
    std::atexit([] { ShutdownUtilityLibrary(); });
    return true;
  }();
  (void)started;
}

void BM_GetProfileIntA(benchmark::State &state) {
  StartLibrary();
  std::vector<Key> const &keys = Keys();
  UtilityApp const app;
  std::size_t next = state.thread_index() * 7919;
  for (auto _ : state) {
    Key const &key = keys[next++ % keys.size()];
    benchmark::DoNotOptimize(app.GetProfileIntA(key.section, key.entry, -1));
  }
}
BENCHMARK(BM_GetProfileIntA)->Threads(1)->Threads(2)->UseRealTime();

struct LockedMap {
  std::shared_mutex lock;
  std::unordered_map<std::string, int> values;
};

LockedMap &Map() {
  static LockedMap map;
  static bool const filled = [] {
    int value = 0;
    for (Key const &key : Keys()) map.values[key.joined] = value++;
    return true;
  }();
  (void)filled;
  return map;
}

void BM_SharedMutexMap(benchmark::State &state) {
  LockedMap &map = Map();
  std::vector<Key> const &keys = Keys();
  std::size_t next = state.thread_index() * 7919;
  for (auto _ : state) {
    Key const &key = keys[next++ % keys.size()];
    std::shared_lock<std::shared_mutex> read(map.lock);
    auto found = map.values.find(key.joined);
    benchmark::DoNotOptimize(found == map.values.end() ? -1 : found->second);
  }
}
BENCHMARK(BM_SharedMutexMap)->Threads(1)->Threads(2)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
