#include <znutil/system/ZnTickCount.h>

#include <chrono>
#include <cstdint>

#include <gtest/gtest.h>

#include "TestClocks.h"

namespace {

std::uint32_t MonotonicTick() {
  auto const since = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(since).count());
}

TEST(ZnTickCountTest, SubtractionKeepsTheWrapRule) {
  struct Case {
    ZnULong later, earlier, span;
  } const cases[] = {
      {10, 3, 7}, {5, 5, 0}, {0xFFFFFFFF, 0, 0xFFFFFFFF}, {0, 1, 0xFFFFFFFE},
      {5, 0xFFFFFFFF, 5},  // 6 across the wrap, less the rule's 1
      {0, 0xFFFFFFFF, 0},
  };
  for (Case const &c : cases) {
    EXPECT_EQ(ZnSubtractTickCounts(c.later, c.earlier), c.span) << c.later << " - " << c.earlier;
  }
}

TEST(ZnTickCountTest, CountsMonotonicMillisecondsOrReadsTheStandIn) {
  std::uint32_t const before = MonotonicTick();
  ZnULong const tick = ZnGetTickCount();
  std::uint32_t const after = MonotonicTick();
  EXPECT_LE(static_cast<std::uint32_t>(tick - before), static_cast<std::uint32_t>(after - before));

  znutil_test::SimulatedClock clock(0xFFFFFFFF);
  EXPECT_EQ(ZnGetTickCount(), 0xFFFFFFFFu);
  clock.Advance(1);
  EXPECT_EQ(ZnGetTickCount(), 0u);
}

}  // namespace
