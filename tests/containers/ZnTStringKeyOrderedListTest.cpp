#include <znutil/containers/ZnTStringKeyOrderedList.h>

#include <string>

#include <gtest/gtest.h>

namespace {

class Path {
 public:
  explicit Path(char const *name) : fsName(name) {}
  ZnString GetKey() const { return fsName; }
  ZnString fsName;
};

std::string Keys(ZnTStringKeyOrderedList<Path> &list) {
  std::string keys;
  ZnListContext position;
  for (Path *item = list.First(position); item != nullptr; item = list.Next(position)) {
    keys += static_cast<char const *>(item->fsName);
    keys += ' ';
  }
  return keys;
}

TEST(ZnTStringKeyOrderedListTest, KeysOrderCaseSensitively) {
  Path items[] = {Path("tools"), Path("Bin"), Path("bin"), Path("apps")};
  ZnTStringKeyOrderedList<Path> list;
  for (Path &item : items) EXPECT_TRUE(list.Add(&item));
  Path twin("bin");
  EXPECT_FALSE(list.Add(&twin));
  EXPECT_EQ(Keys(list), "Bin apps bin tools ");
}

TEST(ZnTStringKeyOrderedListTest, SearchAndDeleteByKeyAlone) {
  Path items[] = {Path("a"), Path("b"), Path("c")};
  ZnTStringKeyOrderedList<Path> list;
  for (Path &item : items) list.Add(&item);
  ZnListContext position;
  EXPECT_EQ(list.Find(ZnString("b"), position), &items[1]);
  EXPECT_EQ(list.Next(position), &items[2]);
  EXPECT_EQ(list.Find(ZnString("B"), position), nullptr);
  EXPECT_EQ(position.OwnedData(), nullptr);

  Path probe("a");
  EXPECT_EQ(list.Find(&probe, position), &items[0]);
  EXPECT_EQ(list.Prev(position), nullptr);

  EXPECT_TRUE(list.Delete(ZnString("b")));
  EXPECT_FALSE(list.Delete(ZnString("b")));
  EXPECT_TRUE(list.Delete(&probe));
  EXPECT_EQ(Keys(list), "c ");

  Path replacement("c");
  EXPECT_TRUE(list.Replace(&replacement));
  EXPECT_EQ(list.Find(ZnString("c"), position), &replacement);
}

}  // namespace
