// Configuration files: reading one generated file of 1,000 sections of 50
// entries of mixed types (text, integer, float, binary) with
// ZnCfgFileParser, side by side with GLib's GKeyFile and with inih reading
// the same settings in their own key=value form (floats in decimal,
// binaries as hexadecimal text). The peers are built in when their
// packages (libglib2.0-dev, libinih-dev) are there.
//
// Each parser reads the file into what an application keeps: ours into the
// typed tree, GKeyFile into its own tables; inih calls a handler per value,
// measured once storing each value in a hash map and once storing nothing.
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include <znutil/configuration/ZnCfgBinaryData.h>
#include <znutil/configuration/ZnCfgFile.h>
#include <znutil/configuration/ZnCfgFileParser.h>
#include <znutil/configuration/ZnCfgFloatData.h>
#include <znutil/configuration/ZnCfgIntegerData.h>
#include <znutil/configuration/ZnCfgSectionList.h>
#include <znutil/configuration/ZnCfgTextData.h>

#ifdef ZNUTIL_BENCH_GLIB
#include <glib.h>
#endif
#ifdef ZNUTIL_BENCH_INIH
#include <ini.h>
#endif

namespace {

constexpr int kSections = 1000;
constexpr int kEntries = 50;

std::string TempPath(char const *extension) {
  return (std::filesystem::temp_directory_path() /
          ("znutil_config_bench_" + std::to_string(getpid()) + extension))
      .string();
}

std::string Name(char const *prefix, int number) {
  char text[32];
  std::snprintf(text, sizeof text, "%s%04d", prefix, number);
  return text;
}

// The value of entry `e` of section `s`, by type: text, integer, float,
// binary of 8 bytes.
struct Value {
  explicit Value(int s, int e) : number(s * kEntries + e), type(e % 4) {}
  std::string Text() const { return "value number " + std::to_string(number) + " of the settings"; }
  int Integer() const { return number * 37 - 5000; }
  float Float() const { return static_cast<float>(number) * 0.25f; }
  ZnBinary Bytes() const {
    unsigned char bytes[8];
    for (int i = 0; i < 8; ++i) bytes[i] = static_cast<unsigned char>(number * (i + 3));
    ZnBinary value;
    value.Store(bytes, 8);
    return value;
  }
  ZnCfgData *Data() const {
    switch (type) {
      case 0: return new ZnCfgTextData(Text().c_str());
      case 1: return new ZnCfgIntegerData(Integer());
      case 2: return new ZnCfgFloatData(Float());
      default: return new ZnCfgBinaryData(Bytes());
    }
  }
  // The value in a key=value file.
  std::string Ini() const {
    switch (type) {
      case 0: return Text();
      case 1: return std::to_string(Integer());
      case 2: {
        char text[32];
        std::snprintf(text, sizeof text, "%.9g", Float());
        return text;
      }
      default: {
        std::string hex;
        ZnBinary bytes = Bytes();
        unsigned char const *data = bytes;
        char pair[3];
        for (int i = 0; i < 8; ++i) std::snprintf(pair, sizeof pair, "%02x", data[i]), hex += pair;
        return hex;
      }
    }
  }

  int number, type;
};

// Writes both files once: ours through the library's writer.
struct Files {
  Files() : ours(TempPath(".cfg")), ini(TempPath(".ini")) {
    ZnCfgSectionList sections;
    std::ofstream iniFile(ini, std::ios::binary);
    for (int s = 0; s < kSections; ++s) {
      auto *entries = new ZnCfgEntryList;
      iniFile << "[" << Name("Section", s) << "]\n";
      for (int e = 0; e < kEntries; ++e) {
        Value const value(s, e);
        entries->Add(new ZnCfgEntry(Name("Entry", e).c_str(), "all", value.Data()));
        iniFile << Name("Entry", e) << "=" << value.Ini() << "\n";
      }
      sections.Add(new ZnCfgSection(Name("Section", s).c_str(), entries));
      iniFile << "\n";
    }
    std::ofstream(ours, std::ios::binary) << sections.FormatFile().Chars();
  }
  ~Files() {
    std::remove(ours.c_str());
    std::remove(ini.c_str());
  }

  std::string ours, ini;
};

Files const &TheFiles() {
  static Files const files;
  return files;
}

void BM_ZnCfgFileParser(benchmark::State &state) {
  ZnCfgFileParser parser(TheFiles().ours.c_str());
  for (auto _ : state) {
    ZnCfgSectionList *sections = parser.Parse();
    if (sections == nullptr || sections->GetCount() != kSections) state.SkipWithError("parse failed");
    delete sections;
  }
}
BENCHMARK(BM_ZnCfgFileParser)->Unit(benchmark::kMillisecond);

#ifdef ZNUTIL_BENCH_GLIB
void BM_GKeyFile(benchmark::State &state) {
  for (auto _ : state) {
    GKeyFile *file = g_key_file_new();
    if (!g_key_file_load_from_file(file, TheFiles().ini.c_str(), G_KEY_FILE_NONE, nullptr))
      state.SkipWithError("load failed");
    g_key_file_free(file);
  }
}
BENCHMARK(BM_GKeyFile)->Unit(benchmark::kMillisecond);
#endif

#ifdef ZNUTIL_BENCH_INIH
int StoreValue(void *user, char const *section, char const *name, char const *value) {
  auto &values = *static_cast<std::unordered_map<std::string, std::string> *>(user);
  values[std::string(section) + '\0' + name] = value;
  return 1;
}

void BM_InihIntoMap(benchmark::State &state) {
  for (auto _ : state) {
    std::unordered_map<std::string, std::string> values;
    if (ini_parse(TheFiles().ini.c_str(), StoreValue, &values) != 0) state.SkipWithError("parse failed");
    benchmark::DoNotOptimize(values.size());
  }
}
BENCHMARK(BM_InihIntoMap)->Unit(benchmark::kMillisecond);

void BM_InihParseOnly(benchmark::State &state) {
  for (auto _ : state) {
    int count = 0;
    auto count_value = [](void *user, char const *, char const *, char const *) { return ++*static_cast<int *>(user), 1; };
    if (ini_parse(TheFiles().ini.c_str(), count_value, &count) != 0) state.SkipWithError("parse failed");
    benchmark::DoNotOptimize(count);
  }
}
BENCHMARK(BM_InihParseOnly)->Unit(benchmark::kMillisecond);
#endif

}  // namespace

// Settings in memory: GetIntegerEntry and SetIntegerEntry of ZnCfgFile on
// a file of 1,000 sections of 50 entries, against GKeyFile's
// g_key_file_get_integer and g_key_file_set_integer on the same settings,
// from one thread and from two. GKeyFile has no lock of its own, so it is
// used behind a mutex, as a store shared by threads must be; ZnCfgFile
// takes its own lock on every call.

namespace {
namespace settings {

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

#ifdef ZNUTIL_BENCH_GLIB

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

#endif  // ZNUTIL_BENCH_GLIB

}  // namespace settings
}  // namespace

BENCHMARK_MAIN();
