#include <znutil/containers/ZnDblList.h>

#include <vector>

#include <gtest/gtest.h>

namespace {

int items[8] = {0, 1, 2, 3, 4, 5, 6, 7};

std::vector<void *> Forward(ZnDblList const &list) {
  std::vector<void *> seen;
  ZnListContext position;
  for (void *item = list.GetFirst(position); item != nullptr; item = list.GetNext(position)) seen.push_back(item);
  return seen;
}

std::vector<void *> Backward(ZnDblList const &list) {
  std::vector<void *> seen;
  ZnListContext position;
  for (void *item = list.GetLast(position); item != nullptr; item = list.GetPrev(position)) seen.push_back(item);
  return seen;
}

std::vector<void *> Items(std::initializer_list<int> indexes) {
  std::vector<void *> result;
  for (int index : indexes) result.push_back(&items[index]);
  return result;
}

void AppendAll(ZnDblList &list, std::initializer_list<int> indexes) {
  for (int index : indexes) list.Append(&items[index]);
}

// Checks both directions, so that a broken back link shows.
void ExpectOrder(ZnDblList const &list, std::initializer_list<int> indexes) {
  std::vector<void *> expected = Items(indexes);
  EXPECT_EQ(Forward(list), expected);
  std::vector<void *> backward(expected.rbegin(), expected.rend());
  EXPECT_EQ(Backward(list), backward);
  EXPECT_EQ(list.GetCount(), static_cast<int>(expected.size()));
}

// Records the virtual Insert and Delete calls that other operations make.
class RecordingList : public ZnDblList {
 public:
  void Insert(void *item, EnumListPosition position, ZnListContext const &context) override {
    ++inserts;
    ZnDblList::Insert(item, position, context);
  }
  void *Delete(ZnListContext &context) override {
    ++deletes;
    return ZnDblList::Delete(context);
  }
  int inserts = 0;
  int deletes = 0;
};

class SameValue : public ZnListItemMatches {
 public:
  bool MatchItem(void *key, void *item) override { return *static_cast<int *>(key) == *static_cast<int *>(item); }
};

class PickOdd : public ZnListItemFilter {
 public:
  bool FilterItem(void *item) override { return *static_cast<int *>(item) % 2 == 1; }
};

class Recorder : public ZnListItemDestroy, public ZnListItemIterate, public ZnListItemCopy {
 public:
  void DestroyItem(void *item) override { seen.push_back(item); }
  bool IterateItem(void *item, void *data, int index) override {
    EXPECT_EQ(data, this);
    EXPECT_EQ(index, static_cast<int>(seen.size()));
    seen.push_back(item);
    return seen.size() < stopAfter;
  }
  void *CopyItem(void *item) override { return item == &items[2] ? nullptr : item; }
  std::vector<void *> seen;
  std::size_t stopAfter = 100;
};

TEST(ZnDblListTest, EmptyListGivesNullEverywhere) {
  ZnDblList list;
  ZnListContext position(&items[0]);
  EXPECT_EQ(list.GetFirst(position), nullptr);
  EXPECT_TRUE(position == NULL_CONTEXT);
  EXPECT_EQ(list.GetLast(position), nullptr);
  EXPECT_EQ(list.GetNext(position), nullptr);
  EXPECT_EQ(list.GetPrev(position), nullptr);
  EXPECT_EQ(list.GetCurrent(position), nullptr);
  EXPECT_TRUE(position == NULL_CONTEXT);
  EXPECT_EQ(list.DeleteFirst(), nullptr);
  EXPECT_EQ(list.DeleteLast(), nullptr);
  EXPECT_EQ(list.Delete(position), nullptr);
  EXPECT_EQ(list.GetCount(), 0);
}

TEST(ZnDblListTest, InsertPlacesAroundTheContextAndKeepsContextsValid) {
  ZnDblList list;
  list.Insert(&items[3], ZnDblList::Before, ZnListContext(&items[7]));  // empty: any context
  list.Prepend(&items[1]);
  list.Append(&items[5]);
  ZnListContext three = list.Find(&items[3]);
  list.Insert(&items[2], ZnDblList::Before, three);
  list.Insert(&items[4], ZnDblList::After, three);
  list.Insert(&items[0], ZnDblList::Before, NULL_CONTEXT);
  list.Insert(&items[6], ZnDblList::After, NULL_CONTEXT);
  ExpectOrder(list, {0, 1, 2, 3, 4, 5, 6});
  EXPECT_EQ(list.GetCurrent(three), &items[3]) << "insertions leave positions valid";
  EXPECT_EQ(list.GetNext(three), &items[4]);

  list.Append(nullptr);
  EXPECT_EQ(list.GetCount(), 8) << "a null item may be stored";
}

TEST(ZnDblListTest, AppendPrependAndAddGoThroughTheVirtualInsert) {
  RecordingList list;
  list.Append(&items[1]);
  list.Prepend(&items[0]);
  list.Add(&items[2]);
  EXPECT_EQ(list.inserts, 3);
  ExpectOrder(list, {0, 1, 2});
}

TEST(ZnDblListTest, FinishedWalkCannotBeResumed) {
  ZnDblList list;
  AppendAll(list, {0, 1});
  ZnListContext position;
  list.GetLast(position);
  EXPECT_EQ(list.GetNext(position), nullptr);
  EXPECT_TRUE(position == NULL_CONTEXT);
  EXPECT_EQ(list.GetPrev(position), nullptr) << "a null context stays null";
  EXPECT_EQ(list.GetCurrent(position), nullptr);

  ZnListContext first, second;
  list.GetFirst(first);
  list.GetFirst(second);
  list.GetNext(first);
  EXPECT_EQ(list.GetCurrent(second), &items[0]) << "walks are independent";
  EXPECT_EQ(list.GetAtContext(first), &items[1]);
}

TEST(ZnDblListTest, DeleteMovesTheContextOnSoAWalkContinuesWithGetCurrent) {
  ZnDblList list;
  AppendAll(list, {0, 1, 2, 3, 4, 5});
  ZnListContext position;
  void *item = list.GetFirst(position);
  while (item != nullptr) {
    if (*static_cast<int *>(item) % 2 == 0) {
      EXPECT_EQ(list.Delete(position), item);
      item = list.GetCurrent(position);
    } else {
      item = list.GetNext(position);
    }
  }
  ExpectOrder(list, {1, 3, 5});

  list.GetLast(position);
  EXPECT_EQ(list.Delete(position), &items[5]);
  EXPECT_TRUE(position == NULL_CONTEXT) << "deleting the last node leaves a null context";
  EXPECT_EQ(list.Delete(position), nullptr);
  ExpectOrder(list, {1, 3});
}

TEST(ZnDblListTest, DeleteAtContextLeavesTheCallersContextAlone) {
  ZnDblList list;
  AppendAll(list, {0, 1, 2});
  ZnListContext position;
  list.GetFirst(position);
  list.GetNext(position);
  void *const node = position.Data();
  EXPECT_EQ(list.DeleteAtContext(position), &items[1]);
  EXPECT_TRUE(position == node) << "the caller's context is not advanced";
  ExpectOrder(list, {0, 2});
}

TEST(ZnDblListTest, DeletingEndsMovesBothEnds) {
  ZnDblList list;
  list.Append(&items[0]);
  EXPECT_EQ(list.DeleteFirst(), &items[0]);
  ExpectOrder(list, {});
  AppendAll(list, {0, 1, 2});
  EXPECT_EQ(list.DeleteLast(), &items[2]);
  EXPECT_EQ(list.DeleteFirst(), &items[0]);
  ExpectOrder(list, {1});
  list.Append(&items[3]);
  ExpectOrder(list, {1, 3});
}

TEST(ZnDblListTest, MergeMovesEveryNodeToTheRequestedPlace) {
  ZnDblList list, other;
  list.Merge(other, ZnDblList::After, NULL_CONTEXT);
  ExpectOrder(list, {});
  AppendAll(other, {2, 3});
  list.Merge(other, ZnDblList::Before, NULL_CONTEXT);
  ExpectOrder(list, {2, 3});
  ExpectOrder(other, {});

  AppendAll(other, {0, 1});
  list.Merge(other, ZnDblList::Before, NULL_CONTEXT);
  AppendAll(other, {6, 7});
  list.Merge(other, ZnDblList::After, NULL_CONTEXT);
  ExpectOrder(list, {0, 1, 2, 3, 6, 7});

  AppendAll(other, {4, 5});
  list.Merge(other, ZnDblList::After, list.Find(&items[3]));
  ExpectOrder(list, {0, 1, 2, 3, 4, 5, 6, 7});

  ZnDblList front;
  AppendAll(front, {0, 1});
  ZnDblList rest;
  AppendAll(rest, {2});
  front.Merge(rest, ZnDblList::Before, front.Find(&items[0]));
  ExpectOrder(front, {2, 0, 1});

  list.Merge(list, ZnDblList::After, NULL_CONTEXT);
  EXPECT_EQ(list.GetCount(), 8) << "merging a list into itself does nothing";
}

TEST(ZnDblListTest, CopyAddsSharedOrCopiedItemsWithoutClearing) {
  ZnDblList source, target;
  AppendAll(source, {1, 2, 3});
  target.Append(&items[0]);
  target.Copy(source);
  ExpectOrder(target, {0, 1, 2, 3});

  Recorder copier;
  ZnDblList filtered;
  filtered.Copy(source, copier);
  ExpectOrder(filtered, {1, 3});  // a null copy is skipped

  source.Copy(source);
  ExpectOrder(source, {1, 2, 3, 1, 2, 3});  // copying into itself takes the items once
}

TEST(ZnDblListTest, IterateCountsAndStopsAtFalseOrANullItem) {
  ZnDblList list;
  AppendAll(list, {0, 1, 2});
  Recorder all;
  list.Iterate(all, &all);
  EXPECT_EQ(all.seen, Items({0, 1, 2}));

  Recorder two;
  two.stopAfter = 2;
  list.Iterate(two, &two);
  EXPECT_EQ(two.seen, Items({0, 1}));

  list.Insert(nullptr, ZnDblList::After, list.Find(&items[0]));
  Recorder early;
  list.Iterate(early, &early);
  EXPECT_EQ(early.seen, Items({0})) << "a stored null ends the walk";
}

TEST(ZnDblListTest, ClearsFreeNodesAndTouchItemsOnlyAsAsked) {
  RecordingList list;
  AppendAll(list, {0, 1, 2, 3, 4});
  PickOdd odd;
  list.Clear(odd);
  EXPECT_EQ(list.deletes, 2) << "filtered items leave through the virtual Delete";
  ExpectOrder(list, {0, 2, 4});

  Recorder destroyer;
  list.Clear(destroyer);
  EXPECT_EQ(destroyer.seen, Items({0, 2, 4}));
  ExpectOrder(list, {});

  AppendAll(list, {5, 6});
  list.Clear();
  ExpectOrder(list, {});
  EXPECT_EQ(items[5], 5);
}

TEST(ZnDblListTest, FindStartsWhereWhenceSays) {
  ZnDblList list;
  AppendAll(list, {1, 2, 1, 3});
  ZnListContext hit = list.Find(&items[1]);
  EXPECT_EQ(list.GetCurrent(hit), &items[1]);
  EXPECT_TRUE(list.Find(&items[1], hit, 1) == hit) << "1 starts at the context";
  ZnListContext second = list.Find(&items[1], hit, 2);
  EXPECT_EQ(list.GetCurrent(second), &items[1]);
  EXPECT_TRUE(second != hit) << "2 walks on to the next identical item";
  EXPECT_EQ(list.GetNext(second), &items[3]);
  EXPECT_TRUE(list.Find(&items[1], list.Find(&items[1], hit, 2), 2) == NULL_CONTEXT);
  EXPECT_TRUE(list.Find(&items[1], second, 0) == hit) << "0 ignores the context";
  EXPECT_TRUE(list.Find(&items[1], hit, 3) == NULL_CONTEXT);
  EXPECT_TRUE(list.Find(&items[1], NULL_CONTEXT, 1) == NULL_CONTEXT);
  EXPECT_TRUE(list.Find(&items[7]) == NULL_CONTEXT);

  int three = 3;
  SameValue same;
  EXPECT_TRUE(list.Find(&three) == NULL_CONTEXT) << "identity, not value";
  ZnListContext byValue = list.Find(&three, same);
  EXPECT_EQ(list.GetCurrent(byValue), &items[3]);
  EXPECT_TRUE(list.Find(&three, byValue, 2, same) == NULL_CONTEXT);
}

}  // namespace
