#include <znutil/concurrency/ZnAtomicWord.h>

#include <climits>
#include <cstdint>

#include <gtest/gtest.h>

#include "ThreadTestSupport.h"

namespace {

TEST(ZnAtomicWordTest, OperationsYieldTheStatedValuesWrapAtThirtyTwoBitsAndLoseNothing) {
  ZnAtomicWord word;
  EXPECT_EQ(word.Get(), 0);
  EXPECT_EQ(word.Increment(), 1);
  EXPECT_EQ(word.Increment(), 2);
  EXPECT_EQ(word.Decrement(), 1);
  EXPECT_EQ(word.Set(42), 1) << "Set yields the old value";
  EXPECT_EQ(ZnAtomicWord(word).Get(), 42);
  word.Set(INT32_MAX);
  EXPECT_EQ(word.Increment(), INT32_MIN);
  EXPECT_EQ(word.Decrement(), INT32_MAX);
  word.Set(0);
  znutil_test::Concurrently(4, [&] {
    for (int i = 0; i < 10000; ++i) word.Increment();
  });
  EXPECT_EQ(word.Get(), 40000);
}

}  // namespace
