#include <znutil/containers/ZnIntList.h>

#include <gtest/gtest.h>

namespace {

TEST(ZnIntListTest, WalksValuesAndAStoredZeroReadsLikeTheEnd) {
  ZnIntList list;
  ZnListContext position;
  EXPECT_EQ(list.First(position), 0);
  for (int value : {0, -5, 7, 2147483647}) list.Add(value);
  EXPECT_EQ(list.First(position), 0);
  EXPECT_TRUE(position != NULL_CONTEXT) << "only the context tells a stored 0 from the end";
  EXPECT_EQ(list.Next(position), -5);
  EXPECT_EQ(list.Next(position), 7);
  EXPECT_EQ(list.Current(position), 7);
  EXPECT_EQ(list.Next(position), 2147483647);
  EXPECT_EQ(list.Next(position), 0);
  EXPECT_EQ(list.Last(position), 2147483647);
  EXPECT_EQ(list.Prev(position), 7);
  EXPECT_EQ(list.GetCount(), 4);
}

}  // namespace
