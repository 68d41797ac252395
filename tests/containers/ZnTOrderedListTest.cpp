#include <znutil/containers/ZnTOrderedList.h>

#include <vector>

#include <gtest/gtest.h>

namespace {

struct Named {
  int key;
  int CompareTo(Named const &other) const { return key - other.key; }
};

class Collect : public ZnListItemDestroy {
 public:
  void DestroyItem(void *item) override { seen.push_back(static_cast<Named *>(item)); }
  std::vector<Named *> seen;
};

std::vector<int> Keys(ZnTOrderedList<Named> &tree) {
  std::vector<int> keys;
  ZnListContext position;
  for (Named *item = tree.First(position); item != nullptr; item = tree.Next(position)) keys.push_back(item->key);
  return keys;
}

TEST(ZnTOrderedListTest, TypedOperationsUseTheTypesOwnOrder) {
  Named items[] = {{3}, {1}, {2}};
  Named probe{2};
  ZnTOrderedList<Named> tree;
  for (Named &item : items) EXPECT_TRUE(tree.Add(&item));
  EXPECT_FALSE(tree.Add(&probe));
  EXPECT_EQ(Keys(tree), (std::vector<int>{1, 2, 3}));
  EXPECT_TRUE(tree.Replace(&probe));
  EXPECT_EQ(tree.Find(&items[2]), &probe);
  EXPECT_TRUE(tree.Delete(&items[2]));
  EXPECT_FALSE(tree.Delete(&probe));
  EXPECT_EQ(Keys(tree), (std::vector<int>{1, 3}));
}

TEST(ZnTOrderedListTest, OwnerFlagAloneDeletesNothingAndAnOwningClearIgnoresItsDestroyer) {
  Named items[] = {{1}, {2}};
  ZnTOrderedList<Named> owning(true);
  Collect destroyer;
  for (bool owner : {true, false}) {
    for (Named &item : items) owning.Add(&item);
    owning.Clear(destroyer);
    EXPECT_EQ(owning.GetCount(), 0);
    EXPECT_EQ(destroyer.seen.size(), owner ? 0u : 2u) << "only a list that is not the owner passes it on";
    owning.RevokeOwnership();
  }
}

}  // namespace
