#include <znutil/containers/ZnIntList.h>

#include <gtest/gtest.h>

namespace {

TEST(ZnIntListTest, WalksValuesWithZeroAtTheEnd) {
  ZnIntList list;
  ZnListContext position;
  EXPECT_EQ(list.First(position), 0);
  list.Add(-5);
  list.Add(7);
  list.Add(2147483647);
  EXPECT_EQ(list.First(position), -5);
  EXPECT_EQ(list.Next(position), 7);
  EXPECT_EQ(list.Current(position), 7);
  EXPECT_EQ(list.Next(position), 2147483647);
  EXPECT_EQ(list.Next(position), 0);
  EXPECT_EQ(list.Last(position), 2147483647);
  EXPECT_EQ(list.Prev(position), 7);
  EXPECT_EQ(list.GetCount(), 3);
}

TEST(ZnIntListTest, StoredZeroReadsLikeTheEnd) {
  ZnIntList list;
  list.Add(0);
  list.Add(1);
  ZnListContext position;
  EXPECT_EQ(list.First(position), 0);
  EXPECT_TRUE(position != NULL_CONTEXT) << "only the context tells a stored 0 from the end";
  EXPECT_EQ(list.Next(position), 1);
}

}  // namespace
