#include <znutil/values/internal/FileStreamBufferPool.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <znutil/values/ZnFileStream.h>

#include "StreamTestSupport.h"

namespace {

using znutil::detail::FileStreamBufferPool;

constexpr int kThreads = 4;

// Runs `body(index)` on kThreads threads at once and waits for them all.
template <typename Body>
void OnThreads(Body body) {
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) threads.emplace_back(body, t);
  for (std::thread &thread : threads) thread.join();
}

TEST(FileStreamBufferPoolTest, NoBufferIsHandedToTwoTakersAtOnce) {
  std::atomic<int> clashes{0};
  OnThreads([&](int t) {
    for (int round = 0; round < 2000; ++round) {
      char *buffer = FileStreamBufferPool::Take();
      std::memset(buffer, 'a' + t, FileStreamBufferPool::kBufferSize);
      for (std::size_t i = 0; i < FileStreamBufferPool::kBufferSize; i += 97)
        if (buffer[i] != 'a' + t) ++clashes;
      FileStreamBufferPool::Give(buffer);
    }
  });
  EXPECT_EQ(clashes.load(), 0);
  EXPECT_GE(FileStreamBufferPool::IdleCount(), 1u);
  EXPECT_LE(FileStreamBufferPool::IdleCount(), static_cast<std::size_t>(kThreads) + 1);
}

TEST(FileStreamBufferPoolTest, BufferedStreamsOnManyThreadsKeepTheirData) {
  // The allocator's page size is set lazily by the first chunk; set it here
  // so that this test looks at the streams alone.
  ZnString const warmUp("warm up");
  std::atomic<int> mismatches{0};
  OnThreads([&](int t) {
    std::string const path = znutil_test::TempFile("thread");
    // Longer than one 512-byte piece of string extraction.
    std::string const text(700 + t, static_cast<char>('a' + t));
    for (int round = 0; round < 20; ++round) {
      {
        ZnFileStream out(ZnString(path.c_str()), ZnFileWrite, true);
        for (int i = 0; i < 100; ++i) out << i << ZnString(text.c_str());
      }
      ZnFileStream in(ZnString(path.c_str()), ZnFileRead, true);
      for (int i = 0; i < 100; ++i) {
        int number = -1;
        ZnString read;
        in >> number >> read;
        if (number != i || text != static_cast<char const *>(read)) ++mismatches;
      }
    }
  });
  EXPECT_EQ(mismatches.load(), 0);
  std::filesystem::remove_all(znutil_test::TestFolder());
}

}  // namespace
