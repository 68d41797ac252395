// Typed streams against the standard streams: 10 million mixed scalars and
// 100,000 strings written and read back through a ZnMemoryStream and a
// buffered ZnFileStream, and through std::ostringstream/istringstream and
// std::ofstream/ifstream with write and read of the same bytes.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <znutil/values/ZnFileStream.h>
#include <znutil/values/ZnMemoryStream.h>

namespace {

constexpr int kScalars = 10000000;
constexpr int kStrings = 100000;

std::string const &FilePath() {
  static std::string const path =
      (std::filesystem::temp_directory_path() / ("znutil_values_bench_" + std::to_string(getpid()) + ".bin")).string();
  return path;
}

// Feeds `put` the scalar sequence: eight types in turn, 4 bytes on average.
template <typename Put>
void PutScalars(Put &&put) {
  for (int i = 0; i < kScalars; i += 8) {
    put(i);
    put(i * 0.5);
    put(static_cast<short>(i));
    put(static_cast<long long>(i) << 20);
    put(static_cast<float>(i));
    put(static_cast<unsigned char>(i));
    put((i & 8) != 0);
    put(static_cast<unsigned int>(i));
  }
}

// Reads the same sequence back through `get` and sums it.
template <typename Get>
double GetScalars(Get &&get) {
  double sum = 0;
  for (int i = 0; i < kScalars; i += 8) {
    int a;
    double b;
    short c;
    long long d;
    float e;
    unsigned char f;
    bool g;
    unsigned int h;
    get(a), get(b), get(c), get(d), get(e), get(f), get(g), get(h);
    sum += a + b + c + static_cast<double>(d) + e + f + g + h;
  }
  return sum;
}

std::vector<std::string> const &Texts() {
  static std::vector<std::string> const texts = [] {
    std::vector<std::string> all;
    for (int i = 0; i < 64; ++i) all.emplace_back(static_cast<std::size_t>(8 + i), static_cast<char>('a' + i % 26));
    return all;
  }();
  return texts;
}

// The standard streams carry a string as its int length and its bytes.
void PutStdString(std::ostream &out, std::string const &text) {
  std::int32_t const length = static_cast<std::int32_t>(text.size());
  out.write(reinterpret_cast<char const *>(&length), sizeof length);
  out.write(text.data(), length);
}

std::size_t GetStdString(std::istream &in, std::string &text) {
  std::int32_t length = 0;
  in.read(reinterpret_cast<char *>(&length), sizeof length);
  text.resize(static_cast<std::size_t>(length));
  in.read(text.data(), length);
  return text.size();
}

template <typename Stream>
void PutZnScalars(Stream &out) {
  PutScalars([&](auto value) { out << value; });
}

template <typename Stream>
double GetZnScalars(Stream &in) {
  return GetScalars([&](auto &value) { in >> value; });
}

void PutStdScalars(std::ostream &out) {
  PutScalars([&](auto value) { out.write(reinterpret_cast<char const *>(&value), sizeof value); });
}

double GetStdScalars(std::istream &in) {
  return GetScalars([&](auto &value) {
    if constexpr (std::is_same_v<std::decay_t<decltype(value)>, bool>) {
      char byte;
      in.read(&byte, 1);
      value = byte != 0;
    } else {
      in.read(reinterpret_cast<char *>(&value), sizeof value);
    }
  });
}

template <typename Stream>
void PutZnStrings(Stream &out, std::vector<ZnString> const &texts) {
  for (int i = 0; i < kStrings; ++i) out << texts[static_cast<std::size_t>(i) % texts.size()];
}

template <typename Stream>
std::size_t GetZnStrings(Stream &in) {
  std::size_t total = 0;
  ZnString text;
  for (int i = 0; i < kStrings; ++i) {
    in >> text;
    total += static_cast<std::size_t>(text.Length());
  }
  return total;
}

std::vector<ZnString> ZnTexts() {
  std::vector<ZnString> texts;
  for (std::string const &text : Texts()) texts.emplace_back(text.c_str());
  return texts;
}

void BM_ScalarsZnMemoryStream(benchmark::State &state) {
  for (auto _ : state) {
    ZnMemoryStream out;
    PutZnScalars(out);
    int length = 0;
    char *const block = out.GetBuffer(length);
    ZnMemoryStream in(block, length);
    benchmark::DoNotOptimize(GetZnScalars(in));
  }
}

void BM_ScalarsStdStringStream(benchmark::State &state) {
  for (auto _ : state) {
    std::ostringstream out;
    PutStdScalars(out);
    std::istringstream in(std::move(out).str());
    benchmark::DoNotOptimize(GetStdScalars(in));
  }
}

void BM_ScalarsZnFileStream(benchmark::State &state) {
  ZnString const path(FilePath().c_str());
  for (auto _ : state) {
    {
      ZnFileStream out(path, ZnFileWrite, true);
      PutZnScalars(out);
    }
    ZnFileStream in(path, ZnFileRead, true);
    benchmark::DoNotOptimize(GetZnScalars(in));
  }
}

void BM_ScalarsStdFileStream(benchmark::State &state) {
  for (auto _ : state) {
    {
      std::ofstream out(FilePath(), std::ios::binary | std::ios::trunc);
      PutStdScalars(out);
    }
    std::ifstream in(FilePath(), std::ios::binary);
    benchmark::DoNotOptimize(GetStdScalars(in));
  }
}

void BM_StringsZnMemoryStream(benchmark::State &state) {
  std::vector<ZnString> const texts = ZnTexts();
  for (auto _ : state) {
    ZnMemoryStream out;
    PutZnStrings(out, texts);
    int length = 0;
    char *const block = out.GetBuffer(length);
    ZnMemoryStream in(block, length);
    benchmark::DoNotOptimize(GetZnStrings(in));
  }
}

void BM_StringsStdStringStream(benchmark::State &state) {
  for (auto _ : state) {
    std::ostringstream out;
    for (int i = 0; i < kStrings; ++i) PutStdString(out, Texts()[static_cast<std::size_t>(i) % Texts().size()]);
    std::istringstream in(std::move(out).str());
    std::size_t total = 0;
    std::string text;
    for (int i = 0; i < kStrings; ++i) total += GetStdString(in, text);
    benchmark::DoNotOptimize(total);
  }
}

void BM_StringsZnFileStream(benchmark::State &state) {
  std::vector<ZnString> const texts = ZnTexts();
  ZnString const path(FilePath().c_str());
  for (auto _ : state) {
    {
      ZnFileStream out(path, ZnFileWrite, true);
      PutZnStrings(out, texts);
    }
    ZnFileStream in(path, ZnFileRead, true);
    benchmark::DoNotOptimize(GetZnStrings(in));
  }
}

// The argument is the streams' buffer size: 0 keeps the library's own
// (8 KiB), 2048 gives them the buffer of ZnFileStream.
void BM_StringsStdFileStream(benchmark::State &state) {
  std::vector<char> buffer(static_cast<std::size_t>(state.range(0)));
  auto sized = [&](auto &stream) {
    if (!buffer.empty()) stream.rdbuf()->pubsetbuf(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    return &stream;
  };
  for (auto _ : state) {
    {
      std::ofstream out;
      sized(out)->open(FilePath(), std::ios::binary | std::ios::trunc);
      for (int i = 0; i < kStrings; ++i) PutStdString(out, Texts()[static_cast<std::size_t>(i) % Texts().size()]);
    }
    std::ifstream in;
    sized(in)->open(FilePath(), std::ios::binary);
    std::size_t total = 0;
    std::string text;
    for (int i = 0; i < kStrings; ++i) total += GetStdString(in, text);
    benchmark::DoNotOptimize(total);
  }
}

BENCHMARK(BM_ScalarsZnMemoryStream)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ScalarsStdStringStream)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ScalarsZnFileStream)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_ScalarsStdFileStream)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_StringsZnMemoryStream)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_StringsStdStringStream)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_StringsZnFileStream)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_StringsStdFileStream)->Arg(0)->Arg(2048)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

int main(int argc, char **argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  std::remove(FilePath().c_str());
  return 0;
}
