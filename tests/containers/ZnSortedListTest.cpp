#include <znutil/containers/ZnSortedList.h>

#include <string>

#include <gtest/gtest.h>

namespace {

class Keyed : public ZnSortedListItem {
 public:
  explicit Keyed(char const *key) : fsKey(key) {}
  ZnString GetSortKey() const override { return fsKey; }
  ZnString fsKey;
};

// The walk as indexes into items, e.g. "102".
std::string Order(ZnSortedList const &list, Keyed const *items) {
  std::string order;
  ZnListContext position;
  for (void *item = list.GetFirst(position); item != nullptr; item = list.GetNext(position)) {
    order += static_cast<char>('0' + (static_cast<Keyed *>(item) - items));
  }
  return order;
}

TEST(ZnSortedListTest, AscendingWithTheNewestOfEqualKeysLast) {
  Keyed items[] = {Keyed("b"), Keyed("a"), Keyed("b"), Keyed("B"), Keyed("ab")};
  ZnSortedList list;
  list.Add(&items[0]);
  list.Prepend(&items[1]);
  list.Append(&items[2]);
  EXPECT_EQ(Order(list, items), "102") << "a, the older b, the newer b";
  list.Insert(&items[3], ZnDblList::After, NULL_CONTEXT);
  ZnListContext last;
  list.GetLast(last);
  static_cast<ZnDblList &>(list).Insert(&items[4], ZnDblList::After, last);
  EXPECT_EQ(Order(list, items), "31402") << "case-sensitive; position and context are ignored";
}

TEST(ZnSortedListTest, CopyingIntoItselfAddsEachItemOnce) {
  Keyed items[] = {Keyed("a"), Keyed("b")};
  ZnSortedList list;
  list.Add(&items[1]);
  list.Add(&items[0]);
  list.Copy(list);
  EXPECT_EQ(Order(list, items), "0011") << "the copies land among the originals";
}

TEST(ZnSortedListTest, NullItemsGoToTheEndAndEndTheSearch) {
  Keyed items[] = {Keyed("m"), Keyed("z"), Keyed("a"), Keyed("n")};
  ZnSortedList list;
  list.Add(&items[0]);
  static_cast<ZnDblList &>(list).Append(nullptr);
  for (Keyed *item = items + 1; item != items + 4; ++item) list.Add(item);
  EXPECT_EQ(list.GetCount(), 5);
  EXPECT_EQ(Order(list, items), "20") << "the walk stops at the null";
  ZnListContext position;
  EXPECT_EQ(list.GetLast(position), &items[3]) << "a search that meets the null inserts at the end";
  EXPECT_EQ(list.GetPrev(position), &items[1]);
}

}  // namespace
