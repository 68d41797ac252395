#include <znutil/concurrency/ZnCriticalSection.h>

#include <thread>

#include <gtest/gtest.h>

#include "ThreadTestSupport.h"

namespace {

using znutil_test::CountOnTwoThreads;

// Each thread enters twice: re-entry must not block its own holder. An
// assigned section keeps a state of its own.
TEST(ZnCriticalSectionTest, ReentersExcludesOtherThreadsAndAssignmentCopiesNoOwner) {
  ZnCriticalSection first, second;
  EXPECT_EQ(CountOnTwoThreads([&](auto increment) {
              first.Enter();
              first.Enter();
              increment();
              first.Leave();
              first.Leave();
            }),
            40000);
  first.Enter();
  second = first;
  std::thread([&] {
    second.Enter();  // would block for ever if the state were shared
    second.Leave();
  }).join();
  first.Leave();
}

}  // namespace
