// Configuration benchmarks.
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include <znutil/configuration/ZnCfgFile.h>

#ifdef ZNUTIL_BENCH_HAVE_GLIB
#include <glib.h>
#endif

// Settings in memory: GetIntegerEntry and SetIntegerEntry of ZnCfgFile on
// a file of 1,000 sections of 50 entries, against GKeyFile's
// g_key_file_get_integer and g_key_file_set_integer on the same settings,
// from one thread and from two. GKeyFile has no lock of its own, so it is
// used behind a mutex, as a store shared by threads must be; ZnCfgFile
// takes its own lock on every call.

namespace {

constexpr int kSections = 1000;
constexpr int kEntries = 50;
constexpr int kPicks = 4096;

std::string SectionName(int section) { return "Section" + std::to_string(section); }
std::string EntryName(int entry) { return "Entry" + std::to_string(entry); }

// The same pseudo-random keys for every contender.
std::vector<std::pair<int, int>> const &Picks() {
  static std::vector<std::pair<int, int>> const picks = [] {
    std::vector<std::pair<int, int>> made;
    unsigned state = 12345;
    for (int i = 0; i < kPicks; ++i) {
      state = state * 1103515245u + 12345u;
      made.emplace_back((state >> 8) % kSections, (state >> 20) % kEntries);
    }
    return made;
  }();
  return picks;
}

struct ZnSettings {
  ZnCfgFile file{"unused.cfg"};
  std::vector<std::pair<ZnString, ZnString>> keys;
  ZnString machine{"alpha7"};
  ZnSettings() {
    for (int section = 0; section < kSections; ++section) {
      for (int entry = 0; entry < kEntries; ++entry)
        file.SetIntegerEntry(SectionName(section).c_str(), EntryName(entry).c_str(), "all", entry);
    }
    for (auto const &pick : Picks())
      keys.emplace_back(SectionName(pick.first).c_str(), EntryName(pick.second).c_str());
  }
};

ZnSettings &Zn() {
  static ZnSettings settings;
  return settings;
}

void BM_ZnCfgFileGetInteger(benchmark::State &state) {
  ZnSettings &settings = Zn();
  std::size_t i = static_cast<std::size_t>(state.thread_index()) * 977;
  for (auto _ : state) {
    auto const &key = settings.keys[i++ % kPicks];
    int value;
    benchmark::DoNotOptimize(settings.file.GetIntegerEntry(key.first, key.second, settings.machine, &value));
    benchmark::DoNotOptimize(value);
  }
}
BENCHMARK(BM_ZnCfgFileGetInteger)->Threads(1)->Threads(2)->UseRealTime();

void BM_ZnCfgFileSetInteger(benchmark::State &state) {
  ZnSettings &settings = Zn();
  std::size_t i = static_cast<std::size_t>(state.thread_index()) * 977;
  for (auto _ : state) {
    auto const &key = settings.keys[i++ % kPicks];
    benchmark::DoNotOptimize(settings.file.SetIntegerEntry(key.first, key.second, settings.machine, 7));
  }
}
BENCHMARK(BM_ZnCfgFileSetInteger)->Threads(1)->Threads(2)->UseRealTime();

#ifdef ZNUTIL_BENCH_HAVE_GLIB

struct GSettings {
  GKeyFile *file = g_key_file_new();
  std::mutex lock;
  std::vector<std::pair<std::string, std::string>> keys;
  GSettings() {
    for (int section = 0; section < kSections; ++section) {
      for (int entry = 0; entry < kEntries; ++entry)
        g_key_file_set_integer(file, SectionName(section).c_str(), EntryName(entry).c_str(), entry);
    }
    for (auto const &pick : Picks()) keys.emplace_back(SectionName(pick.first), EntryName(pick.second));
  }
};

GSettings &G() {
  static GSettings settings;
  return settings;
}

void BM_GKeyFileGetInteger(benchmark::State &state) {
  GSettings &settings = G();
  std::size_t i = static_cast<std::size_t>(state.thread_index()) * 977;
  for (auto _ : state) {
    auto const &key = settings.keys[i++ % kPicks];
    std::lock_guard<std::mutex> hold(settings.lock);
    benchmark::DoNotOptimize(g_key_file_get_integer(settings.file, key.first.c_str(), key.second.c_str(), nullptr));
  }
}
BENCHMARK(BM_GKeyFileGetInteger)->Threads(1)->Threads(2)->UseRealTime();

void BM_GKeyFileSetInteger(benchmark::State &state) {
  GSettings &settings = G();
  std::size_t i = static_cast<std::size_t>(state.thread_index()) * 977;
  for (auto _ : state) {
    auto const &key = settings.keys[i++ % kPicks];
    std::lock_guard<std::mutex> hold(settings.lock);
    g_key_file_set_integer(settings.file, key.first.c_str(), key.second.c_str(), 7);
  }
}
BENCHMARK(BM_GKeyFileSetInteger)->Threads(1)->Threads(2)->UseRealTime();

#endif  // ZNUTIL_BENCH_HAVE_GLIB

}  // namespace
BENCHMARK_MAIN();
