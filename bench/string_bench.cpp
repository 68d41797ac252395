// Copying a ZnString against copying a std::string.
#include <string>

#include <benchmark/benchmark.h>

#include <znutil/text/ZnString.h>

namespace {

void BM_CopyZnString(benchmark::State &state) {
  ZnString const source(std::string(static_cast<std::size_t>(state.range(0)), 'x').c_str());
  for (auto _ : state) {
    ZnString copy(source);
    benchmark::DoNotOptimize(copy);
  }
}

void BM_CopyStdString(benchmark::State &state) {
  std::string const source(static_cast<std::size_t>(state.range(0)), 'x');
  for (auto _ : state) {
    std::string copy(source);
    benchmark::DoNotOptimize(copy);
  }
}

BENCHMARK(BM_CopyZnString)->Arg(10)->Arg(100)->Arg(1000);
BENCHMARK(BM_CopyStdString)->Arg(10)->Arg(100)->Arg(1000);

}  // namespace

BENCHMARK_MAIN();
