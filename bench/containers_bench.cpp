// The containers side by side with their standard counterparts: the AVL
// ordered list against std::map, the hash table against std::unordered_map,
// and the linked list against std::list, on 100,000 random int keys.
#include <algorithm>
#include <cstdint>
#include <cstddef>
#include <list>
#include <map>
#include <random>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <benchmark/benchmark.h>

#include <znutil/containers/ZnDblList.h>
#include <znutil/containers/ZnHash.h>
#include <znutil/containers/ZnHashTable.h>
#include <znutil/containers/ZnOrderedList.h>

namespace {

constexpr int kCount = 100000;

// Distinct random keys in insertion order, and the same keys reshuffled as
// the order of lookups.
struct Keys {
  std::vector<int> insert;
  std::vector<int> find;
};

Keys const &RandomKeys(int count = kCount) {
  static std::map<int, Keys> made;
  Keys &keys = made[count];
  if (keys.insert.empty()) {
    std::mt19937 random(12345);
    for (int i = 0; i < count; ++i) keys.insert.push_back(i * 7 + 1);  // distinct and never 0
    std::shuffle(keys.insert.begin(), keys.insert.end(), random);
    keys.find = keys.insert;
    std::shuffle(keys.find.begin(), keys.find.end(), random);
  }
  return keys;
}

void *AsItem(int value) { return reinterpret_cast<void *>(static_cast<std::intptr_t>(value)); }
int AsInt(void *item) { return static_cast<int>(reinterpret_cast<std::intptr_t>(item)); }

// --- Ordered list against std::map -------------------------------------

// Items are the int keys themselves, kept in the pointers.
class IntOrder : public ZnListItemCompare {
 public:
  int CompareItems(void *left, void *right) override {
    return (AsInt(left) > AsInt(right)) - (AsInt(left) < AsInt(right));
  }
};

void FillTree(ZnOrderedList &tree) {
  IntOrder order;
  for (int key : RandomKeys().insert) tree.Add(AsItem(key), order);
}

void BM_OrderedList_Insert(benchmark::State &state) {
  for (auto _ : state) {
    ZnOrderedList tree;
    FillTree(tree);
    benchmark::DoNotOptimize(tree.GetCount());
  }
  state.SetItemsProcessed(state.iterations() * kCount);
}

void BM_StdMap_Insert(benchmark::State &state) {
  for (auto _ : state) {
    std::map<int, void *> map;
    for (int key : RandomKeys().insert) map.emplace(key, AsItem(key));
    benchmark::DoNotOptimize(map.size());
  }
  state.SetItemsProcessed(state.iterations() * kCount);
}

void BM_OrderedList_Find(benchmark::State &state) {
  ZnOrderedList tree;
  FillTree(tree);
  IntOrder order;
  for (auto _ : state) {
    for (int key : RandomKeys().find) benchmark::DoNotOptimize(tree.Find(AsItem(key), order));
  }
  state.SetItemsProcessed(state.iterations() * kCount);
}

void BM_StdMap_Find(benchmark::State &state) {
  std::map<int, void *> map;
  for (int key : RandomKeys().insert) map.emplace(key, AsItem(key));
  for (auto _ : state) {
    for (int key : RandomKeys().find) benchmark::DoNotOptimize(map.find(key)->second);
  }
  state.SetItemsProcessed(state.iterations() * kCount);
}

// --- Hash table against std::unordered_map -----------------------------

class IntItem : public ZnHashTableItem {
 public:
  IntItem(int key, void *data) : iKey(key), pData(data) {}
  ZnULong Hash() const override { return ZnHash(&iKey, sizeof iKey); }
  void *GetKey() const override { return const_cast<int *>(&iKey); }
  void *GetData() const override { return pData; }
  ZnHashTableItem *Clone() const override { return new IntItem(iKey, pData); }
  bool Equals(ZnHashTableItem const *other) const override { return static_cast<IntItem const *>(other)->iKey == iKey; }

 private:
  int iKey;
  void *pData;
};

class IntTable : public ZnHashTable {
 public:
  IntTable() { MakeDynamic(100); }  // at most one item per bucket on average, as std::unordered_map
  ~IntTable() override { ClearItems(nullptr); }
  void Add(int key) {
    ZnHashTableItem *existing;
    AddItem(new IntItem(key, AsItem(key)), existing);
  }
  void *Find(int key) const {
    IntItem probe(key, nullptr);
    ZnHashTableItem *found;
    return FindItem(&probe, found) == ZnHTSuccess ? found->GetData() : nullptr;
  }
};

// std::unordered_map with the library's hash, to tell the cost of lookup2
// from that of the table's structure.
struct Lookup2 {
  std::size_t operator()(int key) const { return ZnHash(&key, sizeof key); }
};

template <class Map>
void FillMap(Map &map, int count) {
  for (int key : RandomKeys(count).insert) map.emplace(key, AsItem(key));
}

void BM_HashTable_Insert(benchmark::State &state) {
  int const count = static_cast<int>(state.range(0));
  for (auto _ : state) {
    IntTable table;
    for (int key : RandomKeys(count).insert) table.Add(key);
    benchmark::DoNotOptimize(&table);
  }
  state.SetItemsProcessed(state.iterations() * count);
}

template <class Map>
void BM_StdUnorderedMap_Insert(benchmark::State &state) {
  int const count = static_cast<int>(state.range(0));
  for (auto _ : state) {
    Map map;
    FillMap(map, count);
    benchmark::DoNotOptimize(map.size());
  }
  state.SetItemsProcessed(state.iterations() * count);
}

void BM_HashTable_Find(benchmark::State &state) {
  int const count = static_cast<int>(state.range(0));
  IntTable table;
  for (int key : RandomKeys(count).insert) table.Add(key);
  for (auto _ : state) {
    for (int key : RandomKeys(count).find) benchmark::DoNotOptimize(table.Find(key));
  }
  state.SetItemsProcessed(state.iterations() * count);
}

template <class Map>
void BM_StdUnorderedMap_Find(benchmark::State &state) {
  int const count = static_cast<int>(state.range(0));
  Map map;
  FillMap(map, count);
  for (auto _ : state) {
    for (int key : RandomKeys(count).find) benchmark::DoNotOptimize(map.find(key)->second);
  }
  state.SetItemsProcessed(state.iterations() * count);
}

using StdHashMap = std::unordered_map<int, void *>;
using Lookup2Map = std::unordered_map<int, void *, Lookup2>;

// The standard table over the same items, asked through their virtual Hash
// and Equals as ZnHashTable asks them: the items' cost, without our table.
struct ItemHash {
  std::size_t operator()(ZnHashTableItem const *item) const { return item->Hash(); }
};
struct ItemEquals {
  bool operator()(ZnHashTableItem const *left, ZnHashTableItem const *right) const { return left->Equals(right); }
};
using ItemSet = std::unordered_set<ZnHashTableItem *, ItemHash, ItemEquals>;

void FillItems(ItemSet &items, int count) {
  for (int key : RandomKeys(count).insert) items.insert(new IntItem(key, AsItem(key)));
}

void FreeItems(ItemSet &items) {
  for (ZnHashTableItem *item : items) delete item;
}

void BM_StdItemSet_Insert(benchmark::State &state) {
  int const count = static_cast<int>(state.range(0));
  for (auto _ : state) {
    ItemSet items;
    FillItems(items, count);
    FreeItems(items);
    benchmark::DoNotOptimize(items.size());
  }
  state.SetItemsProcessed(state.iterations() * count);
}

void BM_StdItemSet_Find(benchmark::State &state) {
  int const count = static_cast<int>(state.range(0));
  ItemSet items;
  FillItems(items, count);
  for (auto _ : state) {
    for (int key : RandomKeys(count).find) {
      IntItem probe(key, nullptr);
      benchmark::DoNotOptimize((*items.find(&probe))->GetData());
    }
  }
  FreeItems(items);
  state.SetItemsProcessed(state.iterations() * count);
}

// --- Linked list against std::list -------------------------------------

void BM_DblList_Append(benchmark::State &state) {
  for (auto _ : state) {
    ZnDblList list;
    for (int key : RandomKeys().insert) list.Append(AsItem(key));
    benchmark::DoNotOptimize(list.GetCount());
  }
  state.SetItemsProcessed(state.iterations() * kCount);
}

void BM_StdList_Append(benchmark::State &state) {
  for (auto _ : state) {
    std::list<void *> list;
    for (int key : RandomKeys().insert) list.push_back(AsItem(key));
    benchmark::DoNotOptimize(list.size());
  }
  state.SetItemsProcessed(state.iterations() * kCount);
}

void BM_DblList_Walk(benchmark::State &state) {
  ZnDblList list;
  for (int key : RandomKeys().insert) list.Append(AsItem(key));
  for (auto _ : state) {
    long sum = 0;
    ZnListContext position;
    for (void *item = list.GetFirst(position); item != nullptr; item = list.GetNext(position)) sum += AsInt(item);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kCount);
}

void BM_StdList_Walk(benchmark::State &state) {
  std::list<void *> list;
  for (int key : RandomKeys().insert) list.push_back(AsItem(key));
  for (auto _ : state) {
    long sum = 0;
    for (void *item : list) sum += AsInt(item);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kCount);
}

}  // namespace

// The lists run first, on fresh allocator memory: see docs/performance.md
// for what a free list scrambled by earlier benchmarks does to a walk.
BENCHMARK(BM_DblList_Append)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdList_Append)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DblList_Walk)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdList_Walk)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OrderedList_Insert)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdMap_Insert)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OrderedList_Find)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdMap_Find)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HashTable_Insert)->Arg(1000)->Arg(kCount)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(BM_StdUnorderedMap_Insert, StdHashMap)->Arg(1000)->Arg(kCount)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(BM_StdUnorderedMap_Insert, Lookup2Map)->Arg(1000)->Arg(kCount)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_StdItemSet_Insert)->Arg(1000)->Arg(kCount)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_HashTable_Find)->Arg(1000)->Arg(kCount)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(BM_StdUnorderedMap_Find, StdHashMap)->Arg(1000)->Arg(kCount)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(BM_StdUnorderedMap_Find, Lookup2Map)->Arg(1000)->Arg(kCount)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_StdItemSet_Find)->Arg(1000)->Arg(kCount)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
