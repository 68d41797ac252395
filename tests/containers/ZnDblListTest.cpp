#include <znutil/containers/ZnDblList.h>

#include <gtest/gtest.h>

#include <znutil/memory/ZnFixedBlockAllocator.h>

#include "ContextHelpers.h"

namespace {

int items[8] = {0, 1, 2, 3, 4, 5, 6, 7};

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
  std::vector<void *> const expected = Items(indexes);
  EXPECT_EQ(Walk(list), expected);
  EXPECT_EQ(Walk(list, false), std::vector<void *>(expected.rbegin(), expected.rend()));
  EXPECT_EQ(list.GetCount(), static_cast<int>(expected.size()));
}

// Counts the virtual Insert and Delete calls that other operations make.
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
  int inserts = 0, deletes = 0;
};

TEST(ZnDblListTest, EmptyListsAndNullContextsGiveNull) {
  ZnDblList list;
  ZnListContext position(&items[0]);
  EXPECT_EQ(list.GetFirst(position), nullptr);
  EXPECT_TRUE(position == NULL_CONTEXT);
  EXPECT_EQ(list.DeleteFirst(), nullptr);
  EXPECT_EQ(list.DeleteLast(), nullptr);
  AppendAll(list, {0, 1});
  list.GetLast(position);
  EXPECT_EQ(list.GetNext(position), nullptr);
  EXPECT_TRUE(position == NULL_CONTEXT) << "a finished walk cannot be resumed";
  EXPECT_EQ(list.GetPrev(position), nullptr);
  EXPECT_EQ(list.GetCurrent(position), nullptr);
  EXPECT_EQ(list.Delete(position), nullptr);
  EXPECT_EQ(list.GetCount(), 2);
  list.GetFirst(position);
  ZnListContext copy(position);
  list.GetNext(copy);
  EXPECT_EQ(list.GetAtContext(position), &items[0]) << "a copy walks on its own";
}

TEST(ZnDblListTest, InsertPlacesAroundTheContextAndKeepsContextsValid) {
  RecordingList list;
  list.Insert(&items[3], ZnDblList::Before, ZnListContext(&items[7]));  // empty: any context
  list.Prepend(&items[1]);
  list.Append(&items[5]);
  ZnListContext three = list.Find(&items[3]);
  list.Insert(&items[2], ZnDblList::Before, three);
  list.Insert(&items[4], ZnDblList::After, three);
  list.Insert(&items[0], ZnDblList::Before, NULL_CONTEXT);
  list.Add(&items[6]);
  EXPECT_EQ(list.inserts, 7) << "Prepend, Append and Add go through the virtual Insert";
  ExpectOrder(list, {0, 1, 2, 3, 4, 5, 6});
  EXPECT_EQ(list.GetNext(three), &items[4]) << "insertions leave positions valid";
  list.Insert(nullptr, ZnDblList::After, NULL_CONTEXT);
  EXPECT_EQ(list.GetLast(three), nullptr);
  EXPECT_TRUE(three != NULL_CONTEXT) << "a null item may be stored, here at the tail";
}

TEST(ZnDblListTest, DeleteMovesTheContextOnSoAWalkContinuesWithGetCurrent) {
  ZnDblList list;
  AppendAll(list, {0, 1, 2, 3, 4, 5});
  ZnListContext position;
  for (void *item = list.GetFirst(position); item != nullptr;) {
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
  ExpectOrder(list, {1, 3});
  list.GetFirst(position);
  void *const node = position.Data();
  EXPECT_EQ(list.DeleteAtContext(position), &items[1]);
  EXPECT_TRUE(position == node) << "DeleteAtContext does not advance the caller's context";
  void *const block = ZnFixedBlockAllocator::Alloc(sizeof(ZnDblListItem));
  EXPECT_EQ(block, node) << "the deleted node's block goes back to the allocator, freed last, handed out first";
  ZnFixedBlockAllocator::Free(block);
  EXPECT_EQ(list.DeleteLast(), &items[3]);
  ExpectOrder(list, {});
  AppendAll(list, {0, 1});
  EXPECT_EQ(list.DeleteFirst(), &items[0]);
  ExpectOrder(list, {1});
}

TEST(ZnDblListTest, MergeMovesEveryNodeToTheRequestedPlace) {
  ZnDblList list, other;
  list.Merge(other, ZnDblList::After, NULL_CONTEXT);
  AppendAll(other, {2, 3});
  list.Merge(other, ZnDblList::Before, NULL_CONTEXT);  // into an empty list
  ExpectOrder(other, {});
  AppendAll(other, {0, 1});
  list.Merge(other, ZnDblList::Before, NULL_CONTEXT);
  AppendAll(other, {6});
  list.Merge(other, ZnDblList::After, NULL_CONTEXT);
  AppendAll(other, {4, 5});
  list.Merge(other, ZnDblList::After, list.Find(&items[3]));
  AppendAll(other, {7});
  list.Merge(other, ZnDblList::Before, list.Find(&items[0]));
  AppendAll(other, {7});
  list.Merge(other, ZnDblList::After, list.Find(&items[6]));
  ExpectOrder(list, {7, 0, 1, 2, 3, 4, 5, 6, 7});  // both ends follow
  list.Merge(list, ZnDblList::After, NULL_CONTEXT);
  EXPECT_EQ(list.GetCount(), 9) << "merging a list into itself does nothing";
}

TEST(ZnDblListTest, CopyAddsSharedOrCopiedItemsWithoutClearing) {
  ZnDblList source, filtered;
  AppendAll(source, {1, 2, 3});
  ItemCallbacks copier;
  filtered.Append(&items[0]);
  filtered.Copy(source, copier);
  ExpectOrder(filtered, {0, 1, 3});  // a null copy is skipped
  source.Copy(source);
  ExpectOrder(source, {1, 2, 3, 1, 2, 3});  // copying into itself takes the items once
}

TEST(ZnDblListTest, IterateAndClearsTouchItemsOnlyAsAsked) {
  RecordingList list;
  AppendAll(list, {0, 1, 2, 3, 4});
  ItemCallbacks two, filter, destroyer, early;
  two.stopAfter = 2;
  list.Iterate(two, &two);
  EXPECT_EQ(two.seen, Items({0, 1}));
  list.Clear(static_cast<ZnListItemFilter &>(filter));
  EXPECT_EQ(list.deletes, 2) << "filtered items leave through the virtual Delete";
  ExpectOrder(list, {0, 2, 4});
  list.Insert(nullptr, ZnDblList::After, list.Find(&items[0]));
  list.Iterate(early, &early);
  EXPECT_EQ(early.seen, Items({0})) << "a stored null ends the walk";
  list.Clear(static_cast<ZnListItemDestroy &>(destroyer));
  EXPECT_EQ(destroyer.seen, (std::vector<void *>{&items[0], nullptr, &items[2], &items[4]}));
  ExpectOrder(list, {});
  AppendAll(list, {5, 6});
  list.Clear();
  ExpectOrder(list, {});
}

TEST(ZnDblListTest, FindStartsWhereWhenceSays) {
  ZnDblList list;
  AppendAll(list, {1, 2, 1, 3});
  ZnListContext hit = list.Find(&items[1]);
  ZnListContext second = list.Find(&items[1], hit, 2);
  EXPECT_EQ(list.GetCurrent(hit), &items[1]);
  EXPECT_TRUE(list.Find(&items[1], hit, 1) == hit) << "1 starts at the context";
  EXPECT_TRUE(second != hit) << "2 walks on to the next identical item";
  EXPECT_EQ(list.GetNext(second), &items[3]);
  EXPECT_TRUE(list.Find(&items[1], list.Find(&items[1], hit, 2), 2) == NULL_CONTEXT);
  EXPECT_TRUE(list.Find(&items[1], second, 0) == hit) << "0 ignores the context";
  EXPECT_TRUE(list.Find(&items[1], hit, 3) == NULL_CONTEXT);
  EXPECT_TRUE(list.Find(&items[1], NULL_CONTEXT, 1) == NULL_CONTEXT);
  int three = 3;
  ItemCallbacks byValue;
  EXPECT_TRUE(list.Find(&three) == NULL_CONTEXT) << "identity, not value";
  ZnListContext found = list.Find(&three, byValue);
  EXPECT_EQ(list.GetCurrent(found), &items[3]);
  EXPECT_TRUE(list.Find(&three, found, 2, byValue) == NULL_CONTEXT);
}

}  // namespace
