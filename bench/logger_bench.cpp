// The queued logger against spdlog's asynchronous logger, both writing the
// same messages to a file. Two measures: what one Log call costs the
// calling thread (from one and from two threads), and the throughput of a
// batch from the first call until every record is in the file.
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include <benchmark/benchmark.h>

#include <znutil/logging/ZnLogger.h>

#ifdef ZNUTIL_HAVE_SPDLOG
#include <spdlog/async.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#endif

namespace {

// Enough calls to measure, few enough that the logger's stored records
// (kept until Shutdown) stay small.
constexpr int kCallsPerThread = 100000;
constexpr int kBatch = 100000;

char const kText[] = "message of the benchmark run, with a few words of text";

// A scratch folder that is the current one (where ZnLogger puts its file
// while the library knows no start-up folder) for the life of the program.
class Scratch {
 public:
  Scratch() {
    std::string pattern = (std::filesystem::temp_directory_path() / "znutil-logger-bench-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
    setenv("TEMP", path_.c_str(), 1);
    std::filesystem::current_path(path_);
  }
  ~Scratch() {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(path_);
  }
  std::filesystem::path File(char const *name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

Scratch &Folder() {
  static Scratch scratch;
  return scratch;
}

void StartZnLogger() {
  ZnLogger::Initialize();
  while (ZnLogger::LoggerWindow() == nullptr) std::this_thread::yield();
}

void BM_ZnLoggerLogCall(benchmark::State &state) {
  Folder();
  if (state.thread_index() == 0) StartZnLogger();
  ZnString const source("Bench"), category("Timing"), text(kText);
  for (auto _ : state) ZnLogger::Log(ZnLogger::kWarning, source, category, text);
  if (state.thread_index() == 0) {
    ZnLogger::Shutdown();
    std::filesystem::remove(Folder().File("LOGGER.log"));
  }
}
BENCHMARK(BM_ZnLoggerLogCall)->Iterations(kCallsPerThread)->Threads(1)->Threads(2)->UseRealTime();

void BM_ZnLoggerThroughput(benchmark::State &state) {
  Folder();
  ZnString const source("Bench"), category("Timing"), text(kText);
  for (auto _ : state) {
    state.PauseTiming();
    StartZnLogger();
    state.ResumeTiming();
    for (int i = 0; i < kBatch; ++i) ZnLogger::Log(ZnLogger::kWarning, source, category, text);
    ZnLogger::Shutdown();  // returns with every record written and flushed
    state.PauseTiming();
    std::filesystem::remove(Folder().File("LOGGER.log"));
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kBatch);
}
BENCHMARK(BM_ZnLoggerThroughput)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

#ifdef ZNUTIL_HAVE_SPDLOG

// Room for every call of the caller's measure, so that no caller blocks on
// a full queue there.
constexpr std::size_t kSpdlogQueue = 2 * kCallsPerThread + 1024;

std::shared_ptr<spdlog::async_logger> MakeSpdlog(std::shared_ptr<spdlog::details::thread_pool> const &pool) {
  auto sink = std::make_shared<spdlog::sinks::basic_file_sink_mt>(Folder().File("spdlog.log").string());
  auto logger = std::make_shared<spdlog::async_logger>("bench", sink, pool, spdlog::async_overflow_policy::block);
  // The same record as ZnLogger writes: time, type, source, category, then the line.
  logger->set_pattern("%m/%d/%y %I:%M:%S %p  %l  %v");
  return logger;
}

void LogSpdlog(spdlog::async_logger &logger) { logger.warn("{}  {}\n\t{}\n", "Bench", "Timing", kText); }

std::shared_ptr<spdlog::details::thread_pool> spdlogPool;
std::shared_ptr<spdlog::async_logger> spdlogLogger;

void BM_SpdlogLogCall(benchmark::State &state) {
  Folder();
  if (state.thread_index() == 0) {
    spdlogPool = std::make_shared<spdlog::details::thread_pool>(kSpdlogQueue, 1);
    spdlogLogger = MakeSpdlog(spdlogPool);
  }
  for (auto _ : state) LogSpdlog(*spdlogLogger);
  if (state.thread_index() == 0) {
    spdlogLogger.reset();
    spdlogPool.reset();  // joins its thread once the queue is written
    std::filesystem::remove(Folder().File("spdlog.log"));
  }
}
BENCHMARK(BM_SpdlogLogCall)->Iterations(kCallsPerThread)->Threads(1)->Threads(2)->UseRealTime();

void BM_SpdlogThroughput(benchmark::State &state) {
  Folder();
  for (auto _ : state) {
    state.PauseTiming();
    auto pool = std::make_shared<spdlog::details::thread_pool>(8192, 1);
    auto logger = MakeSpdlog(pool);
    state.ResumeTiming();
    for (int i = 0; i < kBatch; ++i) LogSpdlog(*logger);
    logger.reset();
    pool.reset();  // returns with every record written
    state.PauseTiming();
    std::filesystem::remove(Folder().File("spdlog.log"));
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kBatch);
}
BENCHMARK(BM_SpdlogThroughput)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);

#endif

}  // namespace

BENCHMARK_MAIN();
