#include <znutil/containers/ZnHashTable.h>

#include <map>
#include <random>
#include <set>
#include <vector>

#include <gtest/gtest.h>

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

struct Spot {
  ZnHTErrorCode result;
  int bucket;
  int slot;
  ZnHashTable::ZnChainNode *previous;
  ZnHashTableItem *found;
};

class Table : public ZnHashTable {
 public:
  using ZnHashTable::ZnHashTable;
  ~Table() override { ClearItems(nullptr); }
  ZnHTErrorCode Add(Item *item, ZnHashTableItem *&existing) { return AddItem(item, existing); }
  ZnHTErrorCode Add(Item *item) {
    ZnHashTableItem *existing;
    return AddItem(item, existing);
  }
  ZnHTErrorCode Replace(Item *item, ZnHashTableItem *&old) { return ReplaceItem(item, old); }
  ZnHTErrorCode Remove(int key, ZnHashTableItem *&removed, ZnULong hash) {
    Item probe(key, hash);
    return DeleteItem(&probe, removed);
  }
  ZnHashTableItem *Find(int key, ZnULong hash) const {
    Item probe(key, hash);
    ZnHashTableItem *found = nullptr;
    bool const hit = FindItem(&probe, found) == ZnHTSuccess;
    EXPECT_EQ(hit, found != nullptr);
    return found;
  }
  Spot Where(int key, ZnULong hash) const {
    Item probe(key, hash);
    Spot place{};
    place.result = Search(&probe, place.found, &place.bucket, &place.slot, &place.previous);
    return place;
  }
  void Empty(ZnHashTableDeleteCallback *callback) { ClearItems(callback); }
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

std::vector<int> Histogram(ZnHashTable const &table) {
  ZnHashTableStatistics stats;
  table.Statistics(&stats, 2);
  return std::vector<int>(stats.piHistogram, stats.piHistogram + stats.iSlotsPerBucket + 1);
}

ZnHashTableStatistics *Stats(ZnHashTable const &table, ZnHashTableStatistics &stats) {
  table.Statistics(&stats, 1);
  return &stats;
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
  for (int key = 1; key <= 5; ++key) EXPECT_EQ(table.Add(new Item(key, 3)), ZnHTSuccess);
  EXPECT_EQ(table.Where(5, 3).slot, -1) << "in the chain";
  EXPECT_EQ(table.Where(4, 3).slot, 3);
  EXPECT_EQ(Histogram(table), (std::vector<int>{1, 1, 1, 1, 1}));

  ZnHashTableItem *removed = nullptr;
  EXPECT_EQ(table.Remove(1, removed, 3), ZnHTSuccess);
  EXPECT_EQ(static_cast<Item *>(removed)->iKey, 1);
  delete removed;
  EXPECT_EQ(table.Where(2, 3).slot, 0) << "the others moved down";
  EXPECT_EQ(table.Where(5, 3).slot, 3) << "the chain's first item fills the last cell";
  EXPECT_EQ(Histogram(table), (std::vector<int>{1, 1, 1, 1, 0}));

  EXPECT_EQ(table.Remove(3, removed, 3), ZnHTSuccess);
  delete removed;
  EXPECT_EQ(table.Where(5, 3).slot, 2);
  EXPECT_EQ(Histogram(table), (std::vector<int>{1, 1, 1, 0, 0})) << "with no chain, the freed cell is zeroed";
  Spot const free = table.Where(9, 3);
  EXPECT_EQ(free.result, ZnHTNotFound);
  EXPECT_EQ(free.slot, 3) << "a miss names the cell a new item takes";
  EXPECT_EQ(table.Remove(9, removed, 3), ZnHTNotFound);
}

TEST(ZnHashTableTest, ChainDeletesRelinkAroundTheRemovedNode) {
  Table table(7, 1);
  for (int key = 1; key <= 4; ++key) table.Add(new Item(key, 0));
  Spot const third = table.Where(3, 0);
  EXPECT_EQ(third.result, ZnHTExists);
  ASSERT_NE(third.previous, nullptr);
  EXPECT_EQ(third.previous->pItem, table.Find(2, 0)) << "previous is the node before the hit";
  ZnHashTableItem *removed;
  EXPECT_EQ(table.Remove(3, removed, 0), ZnHTSuccess);
  delete removed;
  EXPECT_EQ(table.Remove(2, removed, 0), ZnHTSuccess) << "the chain's head";
  delete removed;
  EXPECT_EQ(table.Where(4, 0).previous, nullptr);
  EXPECT_NE(table.Find(4, 0), nullptr);
  EXPECT_EQ(table.Find(3, 0), nullptr);
  Spot const miss = table.Where(8, 0);
  EXPECT_EQ(miss.slot, -1);
  EXPECT_EQ(miss.previous->pItem, table.Find(4, 0)) << "a miss names the chain's tail";
}

TEST(ZnHashTableTest, RandomDeletesKeepEveryBucketPacked) {
  std::mt19937 random(7);
  Table table(5, 3);  // few buckets, so that chains grow long
  std::map<int, ZnULong> reference;
  for (int step = 0; step < 4000; ++step) {
    int const key = static_cast<int>(random() % 200);
    ZnULong const hash = static_cast<ZnULong>(key * 2654435761u);
    if (random() % 2 == 0) {
      Item *item = new Item(key, hash);
      ZnHashTableItem *existing = nullptr;
      if (table.Add(item, existing) == ZnHTExists) {
        EXPECT_EQ(static_cast<Item *>(existing)->iKey, key);
        delete item;
      }
      reference[key] = hash;
    } else {
      ZnHashTableItem *removed = nullptr;
      EXPECT_EQ(table.Remove(key, removed, hash) == ZnHTSuccess, reference.erase(key) == 1);
      delete removed;
    }
  }
  // Every occupied place must have its bucket filled in front of it.
  std::set<std::pair<int, int>> used;
  for (auto const &[key, hash] : reference) {
    Spot const place = table.Where(key, hash);
    ASSERT_EQ(place.result, ZnHTExists);
    used.insert({place.bucket, place.slot});
  }
  for (auto const &[bucket, slot] : used) {
    for (int before = 0; before < (slot < 0 ? 3 : slot); ++before) EXPECT_TRUE(used.count({bucket, before}));
  }
  ZnHashTableStatistics stats;
  EXPECT_EQ(Stats(table, stats)->iItemCount, static_cast<int>(reference.size()));
}

TEST(ZnHashTableTest, AddRefusesATakenKeyAndReplaceHandsBackTheOldItem) {
  Table table;
  Item *first = new Item(1, ZnULong{77});
  EXPECT_EQ(table.Add(first), ZnHTSuccess);
  Item *twin = new Item(1, 77);
  ZnHashTableItem *existing = nullptr;
  EXPECT_EQ(table.Add(twin, existing), ZnHTExists);
  EXPECT_EQ(existing, first);
  ZnHashTableItem *old = nullptr;
  EXPECT_EQ(table.Replace(twin, old), ZnHTSuccess);
  EXPECT_EQ(old, first);
  EXPECT_EQ(table.Find(1, 77), twin);
  delete old;
  EXPECT_EQ(table.Replace(new Item(2, 77), old), ZnHTSuccess);
  EXPECT_EQ(old, nullptr);

  Table chained(3, 1);
  chained.Add(new Item(1, 0));
  Item *inChain = new Item(2, 0);
  chained.Add(inChain);
  Item *replacement = new Item(2, 0);
  EXPECT_EQ(chained.Replace(replacement, old), ZnHTSuccess);
  EXPECT_EQ(old, inChain);
  EXPECT_EQ(chained.Find(2, 0), replacement);
  delete old;
  ZnHashTableStatistics stats;
  EXPECT_EQ(Stats(chained, stats)->iItemCount, 2);
}

TEST(ZnHashTableTest, DynamicTableDoublesWhenTheThresholdIsReached) {
  Table table;
  table.MakeDynamic(100);
  ZnHashTableStatistics stats;
  for (int key = 0; key < 53; ++key) table.Add(new Item(key, static_cast<ZnULong>(key)));
  EXPECT_EQ(Stats(table, stats)->iBucketCount, 53);
  table.Add(new Item(53, 53));
  EXPECT_EQ(Stats(table, stats)->iBucketCount, 107);
  for (int key = 54; key < 106; ++key) table.Add(new Item(key, static_cast<ZnULong>(key)));
  EXPECT_EQ(Stats(table, stats)->iBucketCount, 107) << "the threshold doubled to 106";
  table.Add(new Item(106, 106));
  EXPECT_EQ(Stats(table, stats)->iBucketCount, 223);
  EXPECT_EQ(stats.iItemCount, 107);
  for (int key = 0; key <= 106; ++key) EXPECT_NE(table.Find(key, static_cast<ZnULong>(key)), nullptr) << key;

  Table staticTable(3, 1);
  for (int key = 0; key < 20; ++key) staticTable.Add(new Item(key, static_cast<ZnULong>(key)));
  EXPECT_EQ(Stats(staticTable, stats)->iBucketCount, 3) << "a static table never grows";

  Table tiny;
  tiny.MakeDynamic(0);
  for (int key = 0; key < 40; ++key) tiny.Add(new Item(key, static_cast<ZnULong>(key)));
  EXPECT_LE(Stats(tiny, stats)->iBucketCount, 10000) << "a zero percentage does not double on every add";
}

TEST(ZnHashTableTest, IterateVisitsEveryItemOnceBeforeAndAfterAResize) {
  Table table(11, 2);
  table.MakeDynamic(200);
  std::multiset<int> expected;
  for (int key = 0; key < 60; ++key) {
    table.Add(new Item(key, static_cast<ZnULong>(key % 7)));
    expected.insert(key);
    if (key == 20 || key == 59) {
      Collect all;
      table.Iterate(all, &all);
      std::multiset<int> seen(all.keys.begin(), all.keys.end());
      std::multiset<int> upTo(expected.begin(), expected.end());
      EXPECT_EQ(seen, upTo);
    }
  }
  Collect some;
  some.stopAfter = 5;
  table.Iterate(some, &some);
  EXPECT_EQ(some.keys.size(), 5u);
}

TEST(ZnHashTableTest, ContextWalkYieldsValuesAndKeysThenNull) {
  Table table(3, 1);
  ZnListContext untouched(&live);
  EXPECT_EQ(table.GetFirst(untouched), nullptr);
  EXPECT_TRUE(untouched == &live) << "an empty table leaves the context alone";

  int values[6];
  for (int key = 0; key < 6; ++key) table.Add(new Item(key, static_cast<ZnULong>(key % 2), &values[key]));
  std::set<void *> seen;
  std::set<int> keys;
  ZnListContext position;
  for (void *value = table.GetFirst(position); value != nullptr; value = table.GetNext(position)) {
    EXPECT_EQ(table.GetCurrent(position), value);
    seen.insert(value);
    keys.insert(*static_cast<int *>(position.Key()));
    EXPECT_EQ(value, &values[*static_cast<int *>(position.Key())]) << "the key belongs to the value";
  }
  EXPECT_EQ(seen.size(), 6u) << "cells and chains alike";
  EXPECT_EQ(keys.size(), 6u);
  EXPECT_EQ(position.Key(), nullptr);
  EXPECT_EQ(table.GetNext(position), nullptr) << "a finished walk stays finished";
  ZnListContextData *const walk = position.OwnedData();
  walk->AddRef();
  EXPECT_EQ(walk->Release(), 2) << "the walk state dies with the context";
  ZnListContext fresh;
  EXPECT_EQ(table.GetNext(fresh), nullptr);
}

TEST(ZnHashTableTest, StoredNullValueEndsTheWalkEarly) {
  Table table(7, 4);
  int value;
  table.Add(new Item(1, 0, &value));
  table.Add(new Item(2, 0, nullptr));
  table.Add(new Item(3, 0, &value));
  ZnListContext position;
  EXPECT_EQ(table.GetFirst(position), &value);
  EXPECT_EQ(table.GetNext(position), nullptr);
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
    source.Empty(&callback);
    EXPECT_EQ(callback.values.size(), 3u);
    EXPECT_EQ(std::set<void *>(callback.values.begin(), callback.values.end()).size(), 3u);
    EXPECT_EQ(live, 3);
    EXPECT_EQ(source.Find(1, 1), nullptr);
    EXPECT_EQ(source.Add(new Item(1, 1)), ZnHTSuccess) << "a cleared table is usable again";
  }
  EXPECT_EQ(live, 0);
}

TEST(ZnHashTableTest, StatisticsReportWhatTheFlagsAskFor) {
  Table table(7, 2);
  for (int key = 0; key < 5; ++key) table.Add(new Item(key, 4));
  ZnHashTableStatistics stats;
  table.Statistics(&stats, 3);
  EXPECT_EQ(stats.iBucketCount, 7);
  EXPECT_EQ(stats.iSlotsPerBucket, 2);
  EXPECT_EQ(stats.iItemCount, 5);
  EXPECT_EQ(std::vector<int>(stats.piHistogram, stats.piHistogram + 3), (std::vector<int>{1, 1, 3}));
  table.Statistics(&stats, 0);
  EXPECT_EQ(stats.piHistogram, nullptr) << "the old histogram is deleted";
  EXPECT_EQ(stats.iItemCount, 0);
  EXPECT_EQ(stats.iBucketCount, 7);

  Table odd(0, 0);
  EXPECT_EQ(Stats(odd, stats)->iBucketCount, 1);
  EXPECT_EQ(stats.iSlotsPerBucket, 1) << "a table has at least one slot per bucket";
}

}  // namespace
