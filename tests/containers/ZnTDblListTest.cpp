#include <znutil/containers/ZnTDblList.h>

#include <gtest/gtest.h>

namespace {

int live = 0;
int deleted = 0;

class Tracked {
 public:
  explicit Tracked(int v) : value(v) { ++live; }
  virtual ~Tracked() {
    --live;
    ++deleted;
  }
  int value;
};

// A type whose owning lists delete their items on Clear, through the
// specialisation hook of ZnTListItemDestroy.
class SelfDeleting : public Tracked {
 public:
  using Tracked::Tracked;
};

}  // namespace

template <>
inline void ZnTListItemDestroy<SelfDeleting>::DestroyTypedItem(SelfDeleting *item) {
  delete item;
}

namespace {

class PickEven : public ZnListItemFilter {
 public:
  bool FilterItem(void *item) override { return static_cast<Tracked *>(item)->value % 2 == 0; }
};

class DeleteAll : public ZnListItemDestroy {
 public:
  void DestroyItem(void *item) override {
    ++calls;
    delete static_cast<Tracked *>(item);
  }
  int calls = 0;
};

void Fill(ZnTDblList<Tracked> &list, int count) {
  for (int i = 0; i < count; ++i) list.Add(new Tracked(i));
}

void Reset() {
  live = 0;
  deleted = 0;
}

TEST(ZnTDblListTest, OwningDeletesDeleteTheItemAndReturnNull) {
  Reset();
  ZnTDblList<Tracked> list(true);
  EXPECT_TRUE(list.IsOwner());
  Fill(list, 4);
  EXPECT_EQ(list.DeleteFirstItem(), nullptr);
  EXPECT_EQ(list.DeleteLastItem(), nullptr);
  ZnListContext position;
  list.First(position);
  EXPECT_EQ(list.DeleteItem(position), nullptr);
  EXPECT_EQ(deleted, 3);
  EXPECT_EQ(list.Current(position)->value, 2) << "the context moved on";

  list.RevokeOwnership();
  Tracked *alive = list.DeleteFirstItem();
  ASSERT_NE(alive, nullptr);
  EXPECT_EQ(alive->value, 2);
  EXPECT_EQ(live, 1);
  delete alive;
  list.TakeOwnership();
  EXPECT_EQ(list.DeleteFirstItem(), nullptr) << "an empty list gives null";
}

TEST(ZnTDblListTest, NonOwningDeletesReturnTheItem) {
  Reset();
  ZnTDblList<Tracked> list;
  EXPECT_FALSE(list.IsOwner());
  Tracked a(1);
  list.Append(&a);
  EXPECT_EQ(list.DeleteFirstItem(), &a);
  EXPECT_EQ(deleted, 0);
}

TEST(ZnTDblListTest, OwningClearAndDestructorDeleteNoItem) {
  Reset();
  Tracked a(1), b(2);
  {
    ZnTDblList<Tracked> list(true);
    list.Append(&a);
    list.Clear();
    EXPECT_EQ(list.GetCount(), 0);
    list.Append(&b);
  }
  EXPECT_EQ(deleted, 0) << "Clear() and the destructor free nodes only";
}

TEST(ZnTDblListTest, ClearWithADestroyerHandsItEveryItem) {
  for (bool owner : {false, true}) {
    Reset();
    ZnTDblList<Tracked> list(owner);
    Fill(list, 3);
    DeleteAll destroyer;
    list.Clear(destroyer);
    EXPECT_EQ(destroyer.calls, 3);
    EXPECT_EQ(live, 0);
    EXPECT_EQ(list.GetCount(), 0);
  }
}

TEST(ZnTDblListTest, OwningFilterDestroysEachFilteredItemExactlyOnce) {
  Reset();
  ZnTDblList<Tracked> list(true);
  Fill(list, 6);
  PickEven even;
  list.Clear(even);
  EXPECT_EQ(deleted, 3);
  EXPECT_EQ(live, 3);
  EXPECT_TRUE(list.IsOwner()) << "ownership is back after the clear";
  ZnListContext position;
  int expected = 1;
  for (Tracked *item = list.First(position); item != nullptr; item = list.Next(position), expected += 2) {
    EXPECT_EQ(item->value, expected);
  }
  DeleteAll destroyer;
  list.Clear(destroyer);
  EXPECT_EQ(live, 0);
}

TEST(ZnTDblListTest, NonOwningFilterOnlyUnlinks) {
  Reset();
  Tracked items[] = {Tracked(0), Tracked(1), Tracked(2)};
  ZnTDblList<Tracked> list;
  for (Tracked &item : items) list.Append(&item);
  PickEven even;
  list.Clear(even);
  EXPECT_EQ(deleted, 0);
  EXPECT_EQ(list.GetCount(), 1);
  ZnListContext position;
  EXPECT_EQ(list.Last(position), &items[1]);
}

TEST(ZnTDblListTest, TypedFunctorsForwardToTheirInnerOne) {
  Reset();
  Tracked item(2);
  ZnTListItemFilter<Tracked> none;
  EXPECT_FALSE(none.FilterItem(&item));
  PickEven even;
  ZnTListItemFilter<Tracked> wrapped(&even);
  Tracked *odd = new Tracked(1);
  EXPECT_FALSE(wrapped.FilterItem(odd));
  EXPECT_EQ(deleted, 0);
  delete odd;
  EXPECT_TRUE(wrapped.FilterItem(new Tracked(4)));
  EXPECT_EQ(deleted, 2) << "what the inner filter picks is deleted";
  ZnTListItemDestroy<Tracked> nothing;
  nothing.DestroyItem(&item);
  EXPECT_EQ(item.value, 2);
}

TEST(ZnTDblListTest, SpecialisedDestroyMakesAnOwningClearDelete) {
  Reset();
  {
    ZnTDblList<SelfDeleting> list(true);
    list.Append(new SelfDeleting(1));
    list.Clear();
    EXPECT_EQ(live, 0);
    list.Append(new SelfDeleting(2));
  }
  EXPECT_EQ(live, 0) << "the destructor clears the same way";
}

TEST(ZnTDblListTest, TypedWalkAndInsert) {
  Tracked a(0), b(1), c(2);
  ZnTDblList<Tracked> list;
  list.Append(&c);
  list.Prepend(&a);
  ZnListContext position;
  list.First(position);
  list.Insert(&b, ZnDblList::After, position);
  EXPECT_EQ(list.Next(position), &b);
  EXPECT_EQ(list.Prev(position), &a);
  EXPECT_EQ(list.Last(position), &c);
  EXPECT_EQ(list.Current(position), &c);
}

}  // namespace
