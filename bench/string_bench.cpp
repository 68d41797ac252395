// ZnString and ZnDictionary against std::string and std::unordered_map.
#include <cstring>
#include <string>
#include <unordered_map>
#include <vector>

#include <benchmark/benchmark.h>

#include <znutil/containers/ZnDictionary.h>
#include <znutil/containers/ZnHash.h>
#include <znutil/text/ZnString.h>
#include <znutil/text/ZnStringTokenizerCallBack.h>

namespace {

std::string Repeated(std::size_t size) { return std::string(size, 'x'); }

// 1 KiB of varied text with the needle at its end.
std::string Haystack() {
  std::string text;
  for (int i = 0; text.size() < 1000; ++i) text += "lorem ipsum dolor sit amet " + std::to_string(i) + " ";
  text.resize(1000);
  return text + "needle";
}

std::string FieldLine() {
  std::string line;
  for (int i = 0; i < 1000; ++i) line += (i ? "," : "") + std::to_string(i * 7);
  return line;
}

std::vector<ZnString> ZnKeys(std::vector<std::string> const &keys) {
  std::vector<ZnString> result;
  for (std::string const &key : keys) result.emplace_back(key.c_str());
  return result;
}

std::vector<std::string> Keys() {
  std::vector<std::string> keys;
  for (int i = 0; i < 10000; ++i) keys.push_back("key_" + std::to_string(i * 2654435761u));
  return keys;
}

void BM_CopyZnString(benchmark::State &state) {
  ZnString const source(Repeated(static_cast<std::size_t>(state.range(0))).c_str());
  for (auto _ : state) {
    ZnString copy(source);
    benchmark::DoNotOptimize(copy);
  }
}

void BM_CopyStdString(benchmark::State &state) {
  std::string const source = Repeated(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    std::string copy(source);
    benchmark::DoNotOptimize(copy);
  }
}

void BM_CompareZnString(benchmark::State &state) {
  std::string text = Repeated(100);
  ZnString const left(text.c_str());
  text.back() = 'y';
  ZnString const right(text.c_str());
  for (auto _ : state) benchmark::DoNotOptimize(left.Compare(right));
}

void BM_CompareStdString(benchmark::State &state) {
  std::string const left = Repeated(100);
  std::string right = left;
  right.back() = 'y';
  for (auto _ : state) benchmark::DoNotOptimize(left.compare(right));
}

void BM_SearchZnString(benchmark::State &state) {
  ZnString const text(Haystack().c_str());
  ZnString const needle("needle");
  for (auto _ : state) benchmark::DoNotOptimize(text.ContainsSubString(needle, 0));
}

void BM_SearchStdString(benchmark::State &state) {
  std::string const text = Haystack();
  std::string const needle = "needle";
  for (auto _ : state) benchmark::DoNotOptimize(text.find(needle));
}

struct CountTokens : ZnStringTokenizerCallBack {
  bool StringTokenizerCallBack(ZnString const &token, ZnString &) override {
    length += token.Length();
    return true;
  }
  long length = 0;
};

void BM_TokenizeZnString(benchmark::State &state) {
  ZnString const line(FieldLine().c_str());
  ZnString const comma(",");
  for (auto _ : state) {
    CountTokens counter;
    line.Tokenize(comma, counter);
    benchmark::DoNotOptimize(counter.length);
  }
}

void BM_TokenizeStdString(benchmark::State &state) {
  std::string const line = FieldLine();
  for (auto _ : state) {
    long length = 0;
    std::size_t start = 0;
    for (;;) {
      std::size_t const end = line.find(',', start);
      std::string const token = line.substr(start, end == std::string::npos ? std::string::npos : end - start);
      length += static_cast<long>(token.size());
      if (end == std::string::npos) break;
      start = end + 1;
    }
    benchmark::DoNotOptimize(length);
  }
}

void BM_AppendZnString(benchmark::State &state) {
  std::string const base = Repeated(20);
  for (auto _ : state) {
    ZnString text(base.c_str());
    text << "0123456789";
    benchmark::DoNotOptimize(text);
  }
}

void BM_AppendStdString(benchmark::State &state) {
  std::string const base = Repeated(20);
  for (auto _ : state) {
    std::string text(base);
    text += "0123456789";
    benchmark::DoNotOptimize(text);
  }
}

void BM_DictionaryAdd(benchmark::State &state) {
  std::vector<std::string> const keys = Keys();
  std::vector<ZnString> const znKeys = ZnKeys(keys);
  for (auto _ : state) {
    ZnDictionary dictionary;
    dictionary.MakeDynamic(100);  // one item a bucket, as unordered_map's load factor
    for (ZnString const &key : znKeys) dictionary.Add(key, &dictionary);
    benchmark::DoNotOptimize(dictionary);
  }
  state.SetItemsProcessed(state.iterations() * 10000);
}

// std::unordered_map with the dictionary's hash (lookup2 of the text), to
// tell the cost of the hash from that of the table's structure.
struct Lookup2 {
  std::size_t operator()(std::string const &key) const { return ZnHash(key.data(), static_cast<ZnULong>(key.size())); }
};

template <class Map>
void BM_UnorderedMapAdd(benchmark::State &state) {
  std::vector<std::string> const keys = Keys();
  for (auto _ : state) {
    Map map;
    for (std::string const &key : keys) map.emplace(key, &map);
    benchmark::DoNotOptimize(map);
  }
  state.SetItemsProcessed(state.iterations() * 10000);
}

// Looks up equal keys built afresh (0), as the standard side does, or the
// very strings that were added (1), which share their text with the keys.
void BM_DictionaryFind(benchmark::State &state) {
  std::vector<std::string> const keys = Keys();
  std::vector<ZnString> const znKeys = ZnKeys(keys);
  ZnDictionary dictionary;
  dictionary.MakeDynamic(100);  // one item a bucket, as unordered_map's load factor
  for (ZnString const &key : znKeys) dictionary.Add(key, &dictionary);
  std::vector<ZnString> const probes = state.range(0) == 0 ? ZnKeys(keys) : znKeys;
  for (auto _ : state)
    for (ZnString const &key : probes) benchmark::DoNotOptimize(dictionary.Find(key));
  state.SetItemsProcessed(state.iterations() * 10000);
}

// std::unordered_map keyed by ZnString itself, with its hash and equality:
// the same key type as the dictionary, in the standard table.
struct ZnStringHash {
  std::size_t operator()(ZnString const &key) const { return key.Hash(); }
};
using ZnStringMap = std::unordered_map<ZnString, void *, ZnStringHash>;

void BM_ZnStringMapFind(benchmark::State &state) {
  std::vector<std::string> const keys = Keys();
  ZnStringMap map;
  for (ZnString const &key : ZnKeys(keys)) map.emplace(key, &map);
  std::vector<ZnString> const probes = ZnKeys(keys);
  for (auto _ : state)
    for (ZnString const &key : probes) benchmark::DoNotOptimize(map.find(key));
  state.SetItemsProcessed(state.iterations() * 10000);
}

template <class Map>
void BM_UnorderedMapFind(benchmark::State &state) {
  std::vector<std::string> const keys = Keys();
  Map map;
  for (std::string const &key : keys) map.emplace(key, &map);
  for (auto _ : state)
    for (std::string const &key : keys) benchmark::DoNotOptimize(map.find(key));
  state.SetItemsProcessed(state.iterations() * 10000);
}

using StdMap = std::unordered_map<std::string, void *>;
using Lookup2Map = std::unordered_map<std::string, void *, Lookup2>;

BENCHMARK(BM_CopyZnString)->Arg(10)->Arg(100)->Arg(1000);
BENCHMARK(BM_CopyStdString)->Arg(10)->Arg(100)->Arg(1000);
BENCHMARK(BM_CompareZnString);
BENCHMARK(BM_CompareStdString);
BENCHMARK(BM_SearchZnString);
BENCHMARK(BM_SearchStdString);
BENCHMARK(BM_TokenizeZnString);
BENCHMARK(BM_TokenizeStdString);
BENCHMARK(BM_AppendZnString);
BENCHMARK(BM_AppendStdString);
BENCHMARK(BM_DictionaryAdd);
BENCHMARK_TEMPLATE(BM_UnorderedMapAdd, StdMap);
BENCHMARK_TEMPLATE(BM_UnorderedMapAdd, Lookup2Map);
BENCHMARK(BM_DictionaryFind)->Arg(0)->Arg(1);
BENCHMARK_TEMPLATE(BM_UnorderedMapFind, StdMap);
BENCHMARK_TEMPLATE(BM_UnorderedMapFind, Lookup2Map);
BENCHMARK(BM_ZnStringMapFind);

}  // namespace

BENCHMARK_MAIN();
