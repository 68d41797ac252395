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

TEST(ZnTStringKeyOrderedListTest, KeysOrderCaseSensitivelyAndSearchWithoutAnItem) {
  Path items[] = {Path("tools"), Path("Bin"), Path("bin"), Path("apps")};
  Path twin("bin"), replacement("apps");
  ZnTStringKeyOrderedList<Path> list;
  for (Path &item : items) EXPECT_TRUE(list.Add(&item));
  EXPECT_FALSE(list.Add(&twin));
  EXPECT_EQ(Keys(list), "Bin apps bin tools ");

  ZnListContext position;
  EXPECT_EQ(list.Find(ZnString("bin"), position), &items[2]);
  EXPECT_EQ(list.Next(position), &items[0]);
  EXPECT_EQ(list.Find(ZnString("BIN"), position), nullptr);
  EXPECT_EQ(position.OwnedData(), nullptr);
  EXPECT_EQ(list.Find(&twin, position), &items[2]);
  EXPECT_EQ(list.Prev(position), &items[3]);

  EXPECT_TRUE(list.Delete(ZnString("bin")));
  EXPECT_FALSE(list.Delete(ZnString("bin")));
  EXPECT_TRUE(list.Delete(&items[0]));
  EXPECT_TRUE(list.Replace(&replacement));
  EXPECT_EQ(list.Find(ZnString("apps"), position), &replacement);
  EXPECT_EQ(Keys(list), "Bin apps ");
}

}  // namespace
