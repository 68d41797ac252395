#include <znutil/concurrency/ZnAtomicWord.h>

#include <climits>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(ZnAtomicWordTest, OperationsYieldTheStatedValuesAndWrapAtThirtyTwoBits) {
  ZnAtomicWord word;
  EXPECT_EQ(word.Get(), 0);
  EXPECT_EQ(word.Increment(), 1);
  EXPECT_EQ(word.Increment(), 2);
  EXPECT_EQ(word.Decrement(), 1);
  EXPECT_EQ(word.Set(42), 1) << "Set yields the old value";
  EXPECT_EQ(word.Get(), 42);
  EXPECT_EQ(ZnAtomicWord(word).Get(), 42);
  word.Set(INT32_MAX);
  EXPECT_EQ(word.Increment(), INT32_MIN);
  EXPECT_EQ(word.Decrement(), INT32_MAX);
}

TEST(ZnAtomicWordTest, ConcurrentIncrementsAreNotLost) {
  ZnAtomicWord word;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([&] {
      for (int i = 0; i < 10000; ++i) word.Increment();
    });
  for (auto &thread : threads) thread.join();
  EXPECT_EQ(word.Get(), 40000);
}

}  // namespace
