#include <znutil/concurrency/ZnCriticalSection.h>

#include <thread>

#include <gtest/gtest.h>

namespace {

// Each thread enters twice: re-entry must not block its own holder.
TEST(ZnCriticalSectionTest, ReentersAndExcludesOtherThreads) {
  ZnCriticalSection section;
  long counter = 0;
  auto work = [&] {
    for (int i = 0; i < 20000; ++i) {
      section.Enter();
      section.Enter();
      ++counter;
      section.Leave();
      section.Leave();
    }
  };
  std::thread a(work), b(work);
  a.join();
  b.join();
  EXPECT_EQ(counter, 40000);
}

TEST(ZnCriticalSectionTest, AssignmentKeepsEachSectionItsOwn) {
  ZnCriticalSection first, second;
  first.Enter();
  second = first;
  std::thread other([&] {
    second.Enter();  // would block for ever if the state were shared
    second.Leave();
  });
  other.join();
  first.Leave();
}

}  // namespace
