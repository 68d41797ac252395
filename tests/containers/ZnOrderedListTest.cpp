#include <znutil/containers/ZnOrderedList.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <set>
#include <vector>

#include <gtest/gtest.h>

namespace {

// Items are ints kept in the pointers; 0 is the null item.
void *AsItem(int value) { return reinterpret_cast<void *>(static_cast<std::intptr_t>(value)); }
int AsInt(void *item) { return static_cast<int>(reinterpret_cast<std::intptr_t>(item)); }

class IntOrder : public ZnListItemCompare {
 public:
  int CompareItems(void *left, void *right) override { return (AsInt(left) > AsInt(right)) - (AsInt(left) < AsInt(right)); }
};

// Entries order by key alone, so that two entries can be equal and still
// be told apart by their tags.
struct Entry {
  int key;
  int tag;
};

class EntryOrder : public ZnListItemCompare {
 public:
  int CompareItems(void *left, void *right) override {
    return static_cast<Entry *>(left)->key - static_cast<Entry *>(right)->key;
  }
};

class EntryDestroy : public ZnListItemDestroy {
 public:
  void DestroyItem(void *item) override { seen.push_back(static_cast<Entry *>(item)); }
  std::vector<Entry *> seen;
};

class Recorder : public ZnListItemDestroy, public ZnListItemIterate {
 public:
  void DestroyItem(void *item) override { seen.push_back(AsInt(item)); }
  bool IterateItem(void *item, void *, int index) override {
    EXPECT_EQ(index, static_cast<int>(seen.size()));
    seen.push_back(AsInt(item));
    return static_cast<int>(seen.size()) < stopAfter;
  }
  std::vector<int> seen;
  int stopAfter = 1 << 30;
};

std::vector<int> Forward(ZnOrderedList const &tree) {
  std::vector<int> seen;
  ZnListContext position;
  for (void *item = tree.GetFirst(position); item != nullptr; item = tree.GetNext(position)) seen.push_back(AsInt(item));
  return seen;
}

std::vector<int> Backward(ZnOrderedList const &tree) {
  std::vector<int> seen;
  ZnListContext position;
  for (void *item = tree.GetLast(position); item != nullptr; item = tree.GetPrev(position)) seen.push_back(AsInt(item));
  return seen;
}

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
  std::vector<int> expected(1000);
  for (int i = 0; i < 1000; ++i) expected[i] = i + 1;
  EXPECT_EQ(Forward(tree), expected);
}

TEST(ZnOrderedListTest, AddKeepsTheStoredItemAndReplaceOverwrites) {
  Entry first{5, 1}, second{5, 2}, other{7, 3};
  EntryOrder order;
  ZnOrderedList tree;
  EXPECT_TRUE(tree.Add(&first, order));
  EXPECT_FALSE(tree.Add(&second, order));
  EXPECT_EQ(tree.GetCount(), 1);
  EXPECT_EQ(tree.Find(&second, order), &first);

  EXPECT_TRUE(tree.Replace(&other, order)) << "an absent item is added";
  EXPECT_EQ(tree.GetCount(), 2);
  EXPECT_TRUE(tree.Replace(&second, order));
  EXPECT_EQ(tree.GetCount(), 2);
  EXPECT_EQ(tree.Find(&first, order), &second);

  EntryDestroy destroyer;
  Entry third{5, 4};
  EXPECT_TRUE(tree.Replace(&third, order, destroyer));
  EXPECT_EQ(destroyer.seen, std::vector<Entry *>{&second}) << "the old item is handed over first";
  EXPECT_EQ(tree.Find(&first, order), &third);
  EXPECT_TRUE(tree.Delete(&first, order, destroyer));
  EXPECT_EQ(destroyer.seen, (std::vector<Entry *>{&second, &third})) << "the stored item goes, not the key";
}

TEST(ZnOrderedListTest, DeleteRemovesOnlyAnEqualItem) {
  ZnOrderedList tree;
  AddRange(tree, 1, 7);
  IntOrder order;
  EXPECT_FALSE(tree.Delete(AsItem(9), order));
  EXPECT_TRUE(tree.Delete(AsItem(4), order)) << "the root, with two children";
  EXPECT_EQ(Forward(tree), (std::vector<int>{1, 2, 3, 5, 6, 7}));
  Recorder destroyer;
  EXPECT_TRUE(tree.Delete(AsItem(6), order, destroyer));
  EXPECT_EQ(destroyer.seen, std::vector<int>{6});
  EXPECT_TRUE(tree.Delete(AsItem(1), order));
  EXPECT_EQ(Forward(tree), (std::vector<int>{2, 3, 5, 7}));
  EXPECT_EQ(tree.GetCount(), 4);
  EXPECT_TRUE(tree.VerifyBalance());
}

TEST(ZnOrderedListTest, EmptyTreeLeavesTheContextAsItWas) {
  ZnOrderedList full, empty;
  AddRange(full, 1, 3);
  ZnListContext position;
  full.GetFirst(position);
  full.GetNext(position);
  ZnListContextData *const walk = position.OwnedData();
  EXPECT_EQ(empty.GetFirst(position), nullptr);
  EXPECT_EQ(empty.GetLast(position), nullptr);
  EXPECT_EQ(position.OwnedData(), walk);
  EXPECT_EQ(full.GetCurrent(position), AsItem(2));
  ZnListContext fresh;
  EXPECT_EQ(full.GetNext(fresh), nullptr) << "no walk state, no step";
  EXPECT_EQ(full.GetCurrent(fresh), nullptr);
}

TEST(ZnOrderedListTest, WalkStopsAtBothEndsAndStaysThere) {
  ZnOrderedList tree;
  AddRange(tree, 1, 20);
  ZnListContext position;
  EXPECT_EQ(tree.GetLast(position), AsItem(20));
  EXPECT_EQ(tree.GetNext(position), nullptr);
  EXPECT_EQ(tree.GetCurrent(position), AsItem(20)) << "unlike a list, the context stays at the last item";
  EXPECT_EQ(tree.GetPrev(position), AsItem(19));
  EXPECT_TRUE(position == NULL_CONTEXT) << "data stays null during a walk";
  tree.GetFirst(position);
  EXPECT_EQ(tree.GetPrev(position), nullptr);
  EXPECT_EQ(tree.GetCurrent(position), AsItem(1));
  std::vector<int> down(20);
  for (int i = 0; i < 20; ++i) down[i] = 20 - i;
  EXPECT_EQ(Backward(tree), down);
}

TEST(ZnOrderedListTest, FindWithAContextPositionsTheWalk) {
  ZnOrderedList tree;
  AddRange(tree, 1, 50);
  IntOrder order;
  for (int key : {1, 17, 32, 50}) {
    ZnListContext position;
    EXPECT_EQ(tree.Find(AsItem(key), order, position), AsItem(key));
    EXPECT_EQ(tree.GetCurrent(position), AsItem(key));
    EXPECT_EQ(tree.GetNext(position), key == 50 ? nullptr : AsItem(key + 1));
    EXPECT_EQ(tree.Find(AsItem(key), order, position), AsItem(key)) << "a second find replaces the walk";
    EXPECT_EQ(tree.GetPrev(position), key == 1 ? nullptr : AsItem(key - 1));
  }
  ZnListContext missed;
  tree.GetFirst(missed);
  EXPECT_EQ(tree.Find(AsItem(51), order, missed), nullptr);
  EXPECT_EQ(missed.OwnedData(), nullptr) << "a miss drops the walk state";
  EXPECT_EQ(tree.Find(AsItem(51), order), nullptr);
}

TEST(ZnOrderedListTest, CopiesOfAContextShareOneWalk) {
  ZnOrderedList tree;
  AddRange(tree, 1, 5);
  ZnListContext position;
  tree.GetFirst(position);
  ZnListContext copy(position);
  tree.GetNext(copy);
  EXPECT_EQ(tree.GetCurrent(position), AsItem(2));
}

TEST(ZnOrderedListTest, WalkStateBelongsToTheContextAlone) {
  ZnOrderedList tree;
  AddRange(tree, 1, 5);
  IntOrder order;
  ZnListContext position;
  for (int round = 0; round < 3; ++round) {
    if (round == 0) tree.GetFirst(position);
    if (round == 1) tree.GetLast(position);
    if (round == 2) tree.Find(AsItem(3), order, position);
    ZnListContextData *const walk = position.OwnedData();
    ASSERT_NE(walk, nullptr);
    walk->AddRef();
    EXPECT_EQ(walk->Release(), 2) << "only the context holds it, so it dies with the context";
  }
}

TEST(ZnOrderedListTest, IterateGoesInOrderPastNullItemsAndStopsAtFalse) {
  ZnOrderedList tree;
  AddRange(tree, 0, 4);  // 0 is a null item
  Recorder all;
  tree.Iterate(all, nullptr);
  EXPECT_EQ(all.seen, (std::vector<int>{0, 1, 2, 3, 4}));
  Recorder three;
  three.stopAfter = 3;
  tree.Iterate(three, nullptr);
  EXPECT_EQ(three.seen, (std::vector<int>{0, 1, 2}));
}

TEST(ZnOrderedListTest, ClearHandsEveryItemOverOnce) {
  ZnOrderedList tree;
  AddRange(tree, 1, 100);
  Recorder destroyer;
  tree.Clear(destroyer);
  EXPECT_EQ(destroyer.seen.size(), 100u);
  EXPECT_EQ(std::set<int>(destroyer.seen.begin(), destroyer.seen.end()).size(), 100u);
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
    bool const add = random() % 3 != 0;
    bool const present = reference.count(value) != 0;
    if (add) {
      EXPECT_EQ(tree.Add(AsItem(value), order), !present);
      reference.insert(value);
    } else {
      EXPECT_EQ(tree.Delete(AsItem(value), order), present);
      reference.erase(value);
    }
    if (step % 1000 == 999) {
      ASSERT_TRUE(tree.VerifyBalance()) << "after step " << step;
      ASSERT_EQ(Forward(tree), std::vector<int>(reference.begin(), reference.end()));
      ASSERT_EQ(Backward(tree), std::vector<int>(reference.rbegin(), reference.rend()));
      EXPECT_LE(tree.Height(), AvlHeightBound(tree.GetCount()));
    }
  }
  EXPECT_EQ(tree.GetCount(), static_cast<int>(reference.size()));
  for (int value : std::vector<int>(reference.begin(), reference.end())) EXPECT_TRUE(tree.Delete(AsItem(value), order));
  EXPECT_EQ(tree.Height(), 0);
}

}  // namespace
