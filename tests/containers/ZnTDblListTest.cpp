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

class Callbacks : public ZnListItemFilter, public ZnListItemDestroy {
 public:
  bool FilterItem(void *item) override { return static_cast<Tracked *>(item)->value % 2 == 0; }
  void DestroyItem(void *item) override { delete static_cast<Tracked *>(item); }
};

// Resets the counters, then adds count new items.
void Fill(ZnTDblList<Tracked> &list, int count) {
  live = deleted = 0;
  for (int i = 0; i < count; ++i) list.Add(new Tracked(i));
}

TEST(ZnTDblListTest, OwningDeletesDeleteTheItemAndReturnNull) {
  EXPECT_FALSE(ZnTDblList<Tracked>().IsOwner());
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
  ASSERT_NE(alive, nullptr) << "a list that is not the owner hands the item back";
  EXPECT_EQ(alive->value, 2);
  EXPECT_EQ(live, 1);
  delete alive;
  list.TakeOwnership();
  EXPECT_EQ(list.DeleteFirstItem(), nullptr) << "an empty list gives null";
}

TEST(ZnTDblListTest, OwningClearAndDestructorDeleteNoItemUnlessTheTypeSaysSo) {
  live = deleted = 0;
  Tracked a(1), b(2);
  {
    ZnTDblList<Tracked> list(true);
    list.Append(&a);
    list.Clear();
    EXPECT_EQ(list.GetCount(), 0);
    list.Append(&b);
  }
  EXPECT_EQ(deleted, 0) << "Clear() and the destructor free nodes only";
  {
    ZnTDblList<SelfDeleting> list(true);
    list.Append(new SelfDeleting(1));
    list.Clear();
    EXPECT_EQ(deleted, 1) << "a specialised destroy makes an owning Clear delete";
    list.Append(new SelfDeleting(2));
  }
  EXPECT_EQ(deleted, 2) << "the destructor clears the same way";
}

TEST(ZnTDblListTest, FilterDestroysEachPickedItemExactlyOnceWhenOwning) {
  ZnTDblList<Tracked> list(true);
  Fill(list, 6);
  Callbacks even;
  list.Clear(static_cast<ZnListItemFilter &>(even));
  EXPECT_EQ(deleted, 3);
  EXPECT_EQ(live, 3);
  EXPECT_TRUE(list.IsOwner()) << "ownership is back after the clear";
  ZnListContext position;
  int expected = 1;
  for (Tracked *item = list.First(position); item != nullptr; item = list.Next(position), expected += 2) {
    EXPECT_EQ(item->value, expected);
  }
  list.Clear(static_cast<ZnListItemDestroy &>(even));
  EXPECT_EQ(live, 0) << "an owning Clear hands a destroyer every item";

  Tracked kept[] = {Tracked(0), Tracked(1), Tracked(2)};
  ZnTDblList<Tracked> plain;
  plain.Append(&kept[2]);
  plain.Prepend(&kept[0]);
  plain.First(position);
  plain.Insert(&kept[1], ZnDblList::After, position);
  plain.Clear(static_cast<ZnListItemFilter &>(even));
  EXPECT_EQ(deleted, 6) << "a list that is not the owner only unlinks";
  EXPECT_EQ(plain.Last(position), &kept[1]);
  EXPECT_EQ(plain.Prev(position), nullptr);
  EXPECT_FALSE(ZnTListItemFilter<Tracked>().FilterItem(&kept[0])) << "a typed filter without inner picks nothing";
}

}  // namespace
