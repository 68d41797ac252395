#include <znutil/containers/ZnHashTable.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "ContextHelpers.h"

namespace {

int live = 0;

// An item whose hash is chosen by the test, so that it can put items in
// one bucket at will. Equal keys are equal items.
class Item : public ZnHashTableItem {
 public:
  Item(int key, ZnULong hash, void *data = nullptr) : iKey(key), udwHash(hash), pData(data) { ++live; }
  ~Item() override { --live; }
  ZnULong Hash() const override { return udwHash; }
  void *GetKey() const override { return const_cast<int *>(&iKey); }
  void *GetData() const override { return pData; }
  ZnHashTableItem *Clone() const override { return new Item(iKey, udwHash, pData); }
  bool Equals(ZnHashTableItem const *other) const override { return static_cast<Item const *>(other)->iKey == iKey; }
  int iKey;
  ZnULong udwHash;
  void *pData;
};

class Table : public ZnHashTable {
 public:
  using ZnHashTable::ZnHashTable;
  using ZnHashTable::ClearItems;
  using ZnHashTable::ReplaceItem;
  ~Table() override { ClearItems(nullptr); }
  // Null when item went in; otherwise item is deleted and the stored one returned.
  ZnHashTableItem *Add(Item *item) {
    ZnHashTableItem *existing = nullptr;
    ZnHTErrorCode const result = AddItem(item, existing);
    EXPECT_EQ(result == ZnHTExists, existing != nullptr);
    if (existing != nullptr) delete item;
    return existing;
  }
  // Deletes the item of key and destroys it.
  ZnHTErrorCode Remove(int key, ZnULong hash) {
    Item probe(key, hash);
    ZnHashTableItem *removed = nullptr;
    ZnHTErrorCode const result = DeleteItem(&probe, removed);
    EXPECT_EQ(result == ZnHTSuccess, removed != nullptr && static_cast<Item *>(removed)->iKey == key);
    delete removed;
    return result;
  }
  ZnHashTableItem *Find(int key, ZnULong hash) const {
    Item probe(key, hash);
    ZnHashTableItem *found = nullptr;
    return FindItem(&probe, found) == ZnHTSuccess ? found : nullptr;
  }
  // The slot of key in its bucket, -1 for the chain; after a miss, where it would go.
  int SlotOf(int key, ZnULong hash, ZnHTErrorCode expected = ZnHTExists) const {
    Item probe(key, hash);
    ZnHashTableItem *found = nullptr;
    ZnChainNode *previous = nullptr;
    int bucket = 0, slot = 0;
    EXPECT_EQ(Search(&probe, found, &bucket, &slot, &previous), expected) << key;
    return slot;
  }
};

class Collect : public ZnHashTableIter, public ZnHashTableDeleteCallback {
 public:
  bool IterateEntry(ZnHashTableItem *item, void *data) override {
    EXPECT_EQ(data, this);
    keys.push_back(static_cast<Item *>(item)->iKey);
    return static_cast<int>(keys.size()) < stopAfter;
  }
  void DeleteData(void *data) override { values.push_back(data); }
  std::vector<int> keys;
  std::vector<void *> values;
  int stopAfter = 1 << 30;
};

// Items per slot, the chain's last; checked against the item count.
std::vector<int> Histogram(ZnHashTable const &table) {
  ZnHashTableStatistics stats;
  table.Statistics(&stats, 3);
  std::vector<int> histogram(stats.piHistogram, stats.piHistogram + stats.iSlotsPerBucket + 1);
  EXPECT_EQ(std::accumulate(histogram.begin(), histogram.end(), 0), stats.iItemCount);
  return histogram;
}

int Buckets(ZnHashTable const &table) {
  ZnHashTableStatistics stats;
  table.Statistics(&stats, 0);
  EXPECT_EQ(stats.iItemCount, 0) << "flag 1 is not set";
  return stats.iBucketCount;
}

// The keys that Iterate visits, sorted, against 0 to last.
void ExpectKeysUpTo(std::vector<int> keys, int last) {
  std::vector<int> expected(static_cast<std::size_t>(last) + 1);
  std::iota(expected.begin(), expected.end(), 0);
  std::sort(keys.begin(), keys.end());
  EXPECT_EQ(keys, expected);
}

TEST(ZnHashTableTest, SearchForClosestPrimeLooksUpwardWithinTheTable) {
  struct {
    int n, expected;
  } const cases[] = {{-5, 1}, {0, 1}, {1, 1}, {2, 2}, {8, 11}, {53, 53}, {106, 107}, {9973, 9973},
                     {9974, 10000}, {9999, 10000}, {10000, 10000}, {20000, 20000}};
  for (auto const &c : cases) EXPECT_EQ(ZnHashTable::SearchForClosestPrime(c.n), c.expected) << c.n;
}

TEST(ZnHashTableTest, FifthItemOfAFullBucketGoesToTheChainAndComesBackOnDelete) {
  Table table(7, 4);
  for (int key = 1; key <= 5; ++key) EXPECT_EQ(table.Add(new Item(key, 3)), nullptr);
  EXPECT_EQ(table.SlotOf(5, 3), -1) << "in the chain";
  EXPECT_EQ(table.SlotOf(4, 3), 3);
  EXPECT_EQ(Histogram(table), (std::vector<int>{1, 1, 1, 1, 1}));
  EXPECT_EQ(table.Remove(1, 3), ZnHTSuccess);
  EXPECT_EQ(table.SlotOf(2, 3), 0) << "the others moved down";
  EXPECT_EQ(table.SlotOf(5, 3), 3) << "the chain's first item fills the last cell";
  EXPECT_EQ(Histogram(table), (std::vector<int>{1, 1, 1, 1, 0}));
  EXPECT_EQ(table.Remove(3, 3), ZnHTSuccess);
  EXPECT_EQ(table.SlotOf(5, 3), 2);
  EXPECT_EQ(Histogram(table), (std::vector<int>{1, 1, 1, 0, 0})) << "with no chain, the freed cell is zeroed";
  EXPECT_EQ(table.SlotOf(9, 3, ZnHTNotFound), 3) << "a miss names the cell a new item takes";

  Table odd(0, 0);
  odd.Add(new Item(1, 0));
  odd.Add(new Item(2, 0));
  EXPECT_EQ(Histogram(odd), (std::vector<int>{1, 1})) << "a slot count below 1 is taken as 1";
}

TEST(ZnHashTableTest, AddRefusesATakenKeyAndReplaceHandsBackTheOldItem) {
  Table table(3, 1);
  Item *first = new Item(1, 0);
  Item *inChain = new Item(2, 0);
  EXPECT_EQ(table.Add(first), nullptr);
  EXPECT_EQ(table.Add(new Item(1, 0)), first) << "the stored item stays";
  table.Add(inChain);
  ZnHashTableItem *old = nullptr;
  for (Item *stored : {first, inChain}) {
    Item *replacement = new Item(stored->iKey, 0);
    EXPECT_EQ(table.ReplaceItem(replacement, old), ZnHTSuccess);
    EXPECT_EQ(old, stored) << "in a cell and in a chain";
    EXPECT_EQ(table.Find(stored->iKey, 0), replacement);
    delete old;
  }
  EXPECT_EQ(table.ReplaceItem(new Item(3, 0), old), ZnHTSuccess);
  EXPECT_EQ(old, nullptr);
  EXPECT_EQ(Histogram(table), (std::vector<int>{1, 2})) << "an absent item is added";
}

TEST(ZnHashTableTest, DynamicTableDoublesAtTheThresholdAndIterateSeesEveryItem) {
  Table table;
  table.MakeDynamic(100);
  Collect before, after, some;  // ten hashes, so that chains grow and move
  for (int key = 0; key < 53; ++key) table.Add(new Item(key, key % 10));
  table.Iterate(before, &before);
  ExpectKeysUpTo(before.keys, 52);
  EXPECT_EQ(Buckets(table), 53);
  table.Add(new Item(53, 53));
  EXPECT_EQ(Buckets(table), 107);
  for (int key = 54; key < 106; ++key) table.Add(new Item(key, key % 10));
  EXPECT_EQ(Buckets(table), 107) << "the threshold doubled to 106";
  table.Add(new Item(106, 106));
  EXPECT_EQ(Buckets(table), 223);
  table.Iterate(after, &after);
  ExpectKeysUpTo(after.keys, 106);
  some.stopAfter = 5;
  table.Iterate(some, &some);
  EXPECT_EQ(some.keys.size(), 5u);

  Table tiny;
  tiny.MakeDynamic(0);
  for (int key = 0; key < 40; ++key) tiny.Add(new Item(key, key));
  EXPECT_LE(Buckets(tiny), 10000) << "a zero percentage does not double on every add";
}

TEST(ZnHashTableTest, ContextWalkYieldsValuesAndKeysThenNull) {
  Table table(3, 1);
  ZnListContext position(&live);
  EXPECT_EQ(table.GetFirst(position), nullptr);
  EXPECT_TRUE(position == &live) << "an empty table leaves the context alone";
  int values[6];
  for (int key = 0; key < 6; ++key) table.Add(new Item(key, key % 2, &values[key]));
  std::vector<int> keys;
  for (void *value = table.GetFirst(position); value != nullptr; value = table.GetNext(position)) {
    EXPECT_EQ(table.GetCurrent(position), value);
    keys.push_back(*static_cast<int *>(position.Key()));
    EXPECT_EQ(value, &values[keys.back()]) << "the key belongs to the value";
  }
  ExpectKeysUpTo(keys, 5);
  EXPECT_EQ(position.Key(), nullptr);
  EXPECT_EQ(table.GetNext(position), nullptr) << "a finished walk stays finished";
  EXPECT_EQ(CountOf(position.OwnedData()), 1) << "only the context holds the walk state";
  ZnListContext fresh;
  EXPECT_EQ(table.GetNext(fresh), nullptr);

  Table nulls(7, 4);
  for (int key = 1; key <= 3; ++key) nulls.Add(new Item(key, 0, key == 2 ? nullptr : &values[0]));
  EXPECT_EQ(nulls.GetFirst(position), &values[0]);
  EXPECT_EQ(nulls.GetNext(position), nullptr) << "a stored null value ends the walk";
}

TEST(ZnHashTableTest, ClearItemsAndCopyDestroyTheItems) {
  live = 0;
  int values[3];
  {
    Table source(7, 1), target(5, 2);
    for (int key = 0; key < 3; ++key) source.Add(new Item(key, 1, &values[key]));
    target.Add(new Item(9, 0));
    target.Copy(source);
    EXPECT_EQ(live, 6) << "the old item of the target is gone, clones came in";
    EXPECT_EQ(target.Find(9, 0), nullptr);
    for (int key = 0; key < 3; ++key) EXPECT_NE(target.Find(key, 1), source.Find(key, 1));
    Collect callback;
    source.ClearItems(&callback);
    std::sort(callback.values.begin(), callback.values.end());
    EXPECT_EQ(callback.values, (std::vector<void *>{&values[0], &values[1], &values[2]}));
    EXPECT_EQ(live, 3);
    EXPECT_EQ(source.Find(1, 1), nullptr);
    EXPECT_EQ(source.Add(new Item(1, 1)), nullptr) << "a cleared table is usable again";
  }
  EXPECT_EQ(live, 0);
}

// Keys below 100 hash apart over the whole 32-bit range; the others share
// seven hashes, so that equal hashes with different keys are common.
ZnULong HashOf(int key) { return key < 100 ? static_cast<ZnULong>(key * 2654435761u) : 0xFFFFFFFFu - key % 7; }

// The buckets as lists, each the cells then the chain in order.
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

// Random adds and deletes, with and without growth: the walk order stays the
// model's (so buckets stay packed and a static table keeps its buckets), and
// every key is found or not as it should be.
TEST(ZnHashTableTest, WalkOrderAndLookupsFollowAModelOfTheBuckets) {
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
      bool const changed = add ? table.Add(new Item(key, HashOf(key))) == nullptr
                               : table.Remove(key, HashOf(key)) == ZnHTSuccess;
      EXPECT_EQ(changed, add != present[key]) << key;
      present[key] = add;
      if (step % 250 != 0) continue;
      Collect walk;
      table.Iterate(walk, &walk);
      ASSERT_EQ(walk.keys, model.Walk()) << c.size << "/" << c.slots << " at step " << step;
      for (int probe = 0; probe < 300; ++probe) {
        auto const *found = static_cast<Item *>(table.Find(probe, HashOf(probe)));
        EXPECT_EQ(found != nullptr && found->iKey == probe, present[probe]) << probe;
      }
    }
  }
}

}  // namespace
