#include <znutil/containers/ZnStack.h>

#include <gtest/gtest.h>

namespace {

int items[3];

TEST(ZnStackTest, LimitedStackRefusesWhenFullAndPopsTheLatest) {
  ZnStack stack(2), none(0);
  EXPECT_TRUE(stack.IsEmpty());
  EXPECT_TRUE(stack.Push(&items[0]));
  EXPECT_TRUE(stack.Push(&items[1]));
  EXPECT_TRUE(stack.IsFull());
  EXPECT_FALSE(stack.Push(&items[2]));
  EXPECT_EQ(stack.Size(), 2);
  ZnListContext top;
  EXPECT_EQ(stack.GetFirst(top), &items[1]) << "the head of the list is the top";
  EXPECT_EQ(stack.Pop(), &items[1]);
  EXPECT_FALSE(stack.IsFull());
  EXPECT_EQ(stack.Pop(), &items[0]);
  EXPECT_EQ(stack.Pop(), nullptr);
  EXPECT_TRUE(stack.IsEmpty());
  EXPECT_FALSE(none.Push(&items[0])) << "a limit of 0 is always full";
}

TEST(ZnStackTest, NegativeLimitsMeanNoLimit) {
  EXPECT_EQ(ZnStack().GetMaxSize(), -1);
  for (int limit : {-1, -7}) {
    ZnStack stack(limit);
    for (int *item = items; item != items + 3; ++item) EXPECT_TRUE(stack.Push(item));
    EXPECT_FALSE(stack.IsFull()) << limit;
  }
}

}  // namespace
