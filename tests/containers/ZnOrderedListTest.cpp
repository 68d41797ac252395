#include <znutil/containers/ZnOrderedList.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "ContextHelpers.h"

namespace {

// Items are ints kept in the pointers; 0 is the null item.
void *AsItem(int value) { return reinterpret_cast<void *>(static_cast<std::intptr_t>(value)); }
int AsInt(void *item) { return static_cast<int>(reinterpret_cast<std::intptr_t>(item)); }

template <typename Ints>
std::vector<void *> Items(Ints const &values) {
  std::vector<void *> items;
  for (int value : values) items.push_back(AsItem(value));
  return items;
}

std::vector<void *> Range(int from, int to) {
  std::vector<int> values(static_cast<std::size_t>(to - from + 1));
  std::iota(values.begin(), values.end(), from);
  return Items(values);
}

// Orders by value, ignoring the low bits given, so that distinct items can be equal.
class IntOrder : public ZnListItemCompare {
 public:
  explicit IntOrder(int ignoredBits = 0) : iShift(ignoredBits) {}
  int CompareItems(void *left, void *right) override {
    int const l = AsInt(left) >> iShift, r = AsInt(right) >> iShift;
    return (l > r) - (l < r);
  }
  int iShift;
};

// The largest height an AVL tree of count nodes can have.
int AvlHeightBound(int count) { return static_cast<int>(1.4405 * std::log2(count + 2.0) - 0.3277); }

void AddRange(ZnOrderedList &tree, int from, int to) {
  IntOrder order;
  for (int value = from; value <= to; ++value) EXPECT_TRUE(tree.Add(AsItem(value), order));
}

TEST(ZnOrderedListTest, InOrderInsertionStaysBalanced) {
  ZnOrderedList tree;
  EXPECT_EQ(tree.Height(), 0);
  AddRange(tree, 1, 1);
  EXPECT_EQ(tree.Height(), 1);
  AddRange(tree, 2, 1000);
  EXPECT_TRUE(tree.VerifyBalance());
  EXPECT_EQ(tree.GetCount(), 1000);
  EXPECT_EQ(tree.Height(), 10);
  EXPECT_EQ(Walk(tree), Range(1, 1000));
}

TEST(ZnOrderedListTest, AddKeepsTheStoredItemAndReplaceOverwrites) {
  void *const first = AsItem(0x51), *const second = AsItem(0x52), *const third = AsItem(0x53);
  IntOrder order(4);  // the three are equal
  ItemCallbacks destroyer;
  ZnOrderedList tree;
  EXPECT_TRUE(tree.Add(first, order));
  EXPECT_FALSE(tree.Add(second, order));
  EXPECT_EQ(tree.GetCount(), 1);
  EXPECT_EQ(tree.Find(second, order), first);
  EXPECT_TRUE(tree.Replace(AsItem(0x70), order)) << "an absent item is added";
  EXPECT_TRUE(tree.Replace(second, order));
  EXPECT_EQ(tree.GetCount(), 2);
  EXPECT_EQ(tree.Find(first, order), second);
  EXPECT_TRUE(tree.Replace(third, order, destroyer));
  EXPECT_EQ(destroyer.seen, std::vector<void *>{second}) << "the old item is handed over first";
  EXPECT_TRUE(tree.Delete(first, order, destroyer));
  EXPECT_EQ(destroyer.seen, (std::vector<void *>{second, third})) << "the stored item goes, not the key";
}

TEST(ZnOrderedListTest, WalksStartAnywhereAndStayAtTheEnds) {
  ZnOrderedList tree, empty;
  AddRange(tree, 1, 50);
  IntOrder order;
  for (int key : {1, 17, 32, 50}) {
    ZnListContext position;
    EXPECT_EQ(tree.Find(AsItem(key), order, position), AsItem(key));
    EXPECT_EQ(CountOf(position.OwnedData()), 1) << "only the context holds the walk state";
    ZnListContext copy(position);
    EXPECT_EQ(tree.GetNext(copy), key == 50 ? nullptr : AsItem(key + 1));
    EXPECT_EQ(tree.GetCurrent(position), AsItem(std::min(key + 1, 50))) << "copies share one walk; it stays at the end";
    EXPECT_EQ(tree.Find(AsItem(key), order, position), AsItem(key)) << "a second find replaces the walk";
    EXPECT_EQ(tree.GetPrev(position), key == 1 ? nullptr : AsItem(key - 1));
    EXPECT_EQ(tree.GetCurrent(position), AsItem(std::max(key - 1, 1)));
    EXPECT_TRUE(position == NULL_CONTEXT) << "data stays null during a walk";
  }
  ZnListContext position;
  EXPECT_EQ(tree.GetLast(position), AsItem(50));
  EXPECT_EQ(CountOf(position.OwnedData()), 1);
  EXPECT_EQ(empty.GetFirst(position), nullptr);
  EXPECT_EQ(empty.GetLast(position), nullptr);
  EXPECT_EQ(tree.GetCurrent(position), AsItem(50)) << "an empty tree leaves the context as it was";
  EXPECT_EQ(tree.Find(AsItem(51), order, position), nullptr);
  EXPECT_EQ(position.OwnedData(), nullptr) << "a miss drops the walk state";
  EXPECT_EQ(tree.GetNext(position), nullptr) << "no walk state, no step";
  EXPECT_EQ(tree.GetCurrent(position), nullptr);
  EXPECT_EQ(tree.GetFirst(position), AsItem(1));
  EXPECT_EQ(CountOf(position.OwnedData()), 1);
  EXPECT_EQ(tree.Find(AsItem(51), order), nullptr);
  int marker = 0;
  ZnListContext reused(&marker);  // as a hash table walk leaves a context
  reused.SetKey(&marker);
  EXPECT_EQ(tree.GetFirst(reused), AsItem(1));
  EXPECT_TRUE(reused == NULL_CONTEXT && reused.Key() == nullptr) << "a walk clears the position and key it finds";
}

TEST(ZnOrderedListTest, IterateAndClearVisitEveryItem) {
  ZnOrderedList tree;
  AddRange(tree, 0, 4);  // 0 is a null item
  ItemCallbacks all, three, destroyer;
  tree.Iterate(all, &all);
  EXPECT_EQ(all.seen, Range(0, 4)) << "in order, and a null item does not end the walk";
  three.stopAfter = 3;
  tree.Iterate(three, &three);
  EXPECT_EQ(three.seen, Range(0, 2));

  AddRange(tree, 5, 100);
  tree.Clear(destroyer);
  std::sort(destroyer.seen.begin(), destroyer.seen.end(), std::less<void *>());
  EXPECT_EQ(destroyer.seen, Range(0, 100)) << "every item once";
  EXPECT_EQ(tree.GetCount(), 0);
  EXPECT_EQ(tree.Height(), 0);
  AddRange(tree, 1, 3);
  tree.Clear();
  EXPECT_EQ(tree.GetCount(), 0);
}

TEST(ZnOrderedListTest, RandomAddsAndDeletesKeepBalanceAndOrder) {
  std::mt19937 random(20240611);
  std::uniform_int_distribution<int> key(1, 3000);
  ZnOrderedList tree;
  std::set<int> reference;
  IntOrder order;
  for (int step = 0; step < 20000; ++step) {
    int const value = key(random);
    bool const present = reference.count(value) != 0;
    if (random() % 3 != 0) {
      EXPECT_EQ(tree.Add(AsItem(value), order), !present);
      reference.insert(value);
    } else {
      EXPECT_EQ(tree.Delete(AsItem(value), order), present);
      reference.erase(value);
    }
    if (step % 1000 == 999) {
      ASSERT_TRUE(tree.VerifyBalance()) << "after step " << step;
      ASSERT_EQ(Walk(tree), Items(reference));
      ASSERT_EQ(Walk(tree, false), Items(std::vector<int>(reference.rbegin(), reference.rend())));
      EXPECT_LE(tree.Height(), AvlHeightBound(tree.GetCount()));
    }
  }
  EXPECT_EQ(tree.GetCount(), static_cast<int>(reference.size()));
  for (int value : reference) EXPECT_TRUE(tree.Delete(AsItem(value), order));
  EXPECT_EQ(tree.Height(), 0);
}

}  // namespace
