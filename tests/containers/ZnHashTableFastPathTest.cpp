// The table keeps each item's hash beside it and places items again on
// growth from those hashes; these cases hold its walk order and lookups to
// a plain model of buckets: a list per bucket, the cells then the chain.
#include <znutil/containers/ZnHashTable.h>

#include <algorithm>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

// Keys below 100 hash apart over the whole 32-bit range; the others share
// seven hashes, so that equal hashes with different keys are common.
ZnULong HashOf(int key) { return key < 100 ? static_cast<ZnULong>(key * 2654435761u) : 0xFFFFFFFFu - key % 7; }

class Item : public ZnHashTableItem {
 public:
  explicit Item(int key) : iKey(key) {}
  ZnULong Hash() const override { return HashOf(iKey); }
  void *GetKey() const override { return const_cast<int *>(&iKey); }
  void *GetData() const override { return nullptr; }
  ZnHashTableItem *Clone() const override { return new Item(iKey); }
  bool Equals(ZnHashTableItem const *other) const override { return static_cast<Item const *>(other)->iKey == iKey; }
  int iKey;
};

class Table : public ZnHashTable, public ZnHashTableIter {
 public:
  using ZnHashTable::ZnHashTable;
  ~Table() override { ClearItems(nullptr); }
  bool Add(int key) {
    Item *item = new Item(key);
    ZnHashTableItem *existing;
    if (AddItem(item, existing) == ZnHTSuccess) return true;
    delete item;
    return false;
  }
  bool Remove(int key) {
    Item probe(key);
    ZnHashTableItem *removed = nullptr;
    bool const hit = DeleteItem(&probe, removed) == ZnHTSuccess;
    delete removed;
    return hit;
  }
  bool Has(int key) const {
    Item probe(key);
    ZnHashTableItem *found = nullptr;
    return FindItem(&probe, found) == ZnHTSuccess && static_cast<Item *>(found)->iKey == key;
  }
  std::vector<int> Walk() {
    walked.clear();
    Iterate(*this, nullptr);
    return walked;
  }
  bool IterateEntry(ZnHashTableItem *item, void *) override {
    walked.push_back(static_cast<Item *>(item)->iKey);
    return true;
  }

 private:
  std::vector<int> walked;
};

struct Model {
  int slots;
  int threshold;  // 0: static
  std::vector<std::vector<int>> buckets;
  int count = 0;

  void Append(int key) { buckets[HashOf(key) % buckets.size()].push_back(key); }
  void Add(int key) {
    if (threshold > 0 && threshold <= count) Grow();
    Append(key);
    ++count;
  }
  void Remove(int key) {
    auto &list = buckets[HashOf(key) % buckets.size()];
    list.erase(std::find(list.begin(), list.end(), key));
    --count;
  }
  // All the cells bucket by bucket, then all the chains.
  void Grow() {
    std::vector<std::vector<int>> old(static_cast<std::size_t>(
        ZnHashTable::SearchForClosestPrime(2 * static_cast<int>(buckets.size()))));
    old.swap(buckets);
    threshold *= 2;
    for (bool cells : {true, false}) {
      for (auto const &list : old) {
        for (std::size_t i = 0; i < list.size(); ++i) {
          if ((static_cast<int>(i) < slots) == cells) Append(list[i]);
        }
      }
    }
  }
  std::vector<int> Walk() const {
    std::vector<int> keys;
    for (auto const &list : buckets) keys.insert(keys.end(), list.begin(), list.end());
    return keys;
  }
};

TEST(ZnHashTableFastPathTest, WalkOrderAndLookupsFollowTheBucketsAcrossGrowthAndDeletes) {
  struct {
    int size, slots, percent;
  } const cases[] = {{3, 1, 150}, {3, 4, 100}, {2, 2, 300}, {20000, 2, 0}};
  for (auto const &c : cases) {
    Table table(c.size, c.slots);
    if (c.percent > 0) table.MakeDynamic(c.percent);
    int const buckets = ZnHashTable::SearchForClosestPrime(c.size);
    Model model{c.slots, c.percent > 0 ? buckets * c.percent / 100 : 0,
                std::vector<std::vector<int>>(static_cast<std::size_t>(buckets))};
    std::mt19937 random(11);
    std::vector<bool> present(300);
    for (int step = 1; step <= 3000; ++step) {
      int const key = static_cast<int>(random() % 300);
      bool const add = random() % 3 != 0;  // mostly adds, so the table grows
      if (add && !present[key]) model.Add(key);
      if (!add && present[key]) model.Remove(key);
      EXPECT_EQ(add ? table.Add(key) : table.Remove(key), add != present[key]) << key;
      present[key] = add;
      if (step % 250 != 0) continue;
      ASSERT_EQ(table.Walk(), model.Walk()) << c.size << "/" << c.slots << " at step " << step;
      for (int probe = 0; probe < 300; ++probe) EXPECT_EQ(table.Has(probe), present[probe]) << probe;
    }
  }
}

}  // namespace
