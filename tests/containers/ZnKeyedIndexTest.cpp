#include <znutil/containers/ZnDictionary.h>
#include <znutil/containers/ZnIndex.h>
#include <znutil/containers/ZnIndex64.h>
#include <znutil/containers/ZnUuidIndex.h>

#include <cstring>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

// Makes the n-th distinct key of each index type.
ZnULong KeyOf(ZnIndex *, int n) { return static_cast<ZnULong>(n); }
unsigned long long KeyOf(ZnIndex64 *, int n) { return (1ull << 40) * static_cast<unsigned long long>(n) + 7; }
ZnString KeyOf(ZnDictionary *, int n) { return ZnString("key") << n; }
ZnUuid KeyOf(ZnUuidIndex *, int n) {
  ZnUuid key(NULL_UUID);
  key.udwData1 = static_cast<ZnULong>(n);
  return key;
}

int CountOf(ZnHashTable const &table) {
  ZnHashTableStatistics stats;
  table.Statistics(&stats, 1);
  return stats.iItemCount;
}

template <typename Index>
class ZnKeyedIndexTest : public ::testing::Test {
 protected:
  auto Key(int n) { return KeyOf(static_cast<Index *>(nullptr), n); }
  Index index;
  int values[100] = {};
};

using IndexTypes = ::testing::Types<ZnIndex, ZnIndex64, ZnDictionary, ZnUuidIndex>;
TYPED_TEST_SUITE(ZnKeyedIndexTest, IndexTypes);

TYPED_TEST(ZnKeyedIndexTest, LookupsSurviveGrowthAndAWalk) {
  auto &index = this->index;
  int *const values = this->values;
  index.MakeDynamic(75);
  for (int n = 0; n < 100; ++n) EXPECT_EQ(index.Add(this->Key(n), &values[n]), nullptr);
  EXPECT_EQ(index.Add(this->Key(1), &values[2]), &values[1]) << "Add keeps the first value";
  for (int n = 0; n < 100; n += 2) EXPECT_EQ(index.Delete(this->Key(n)), &values[n]);
  EXPECT_EQ(index.Delete(this->Key(0)), nullptr) << "a second Delete finds nothing";
  for (int n = 0; n < 100; ++n) EXPECT_EQ(index.Find(this->Key(n)), n % 2 ? &values[n] : nullptr);
  EXPECT_EQ(index.Replace(this->Key(3), &values[4]), &values[3]);
  EXPECT_EQ(index.Find(this->Key(3)), &values[4]);
  EXPECT_EQ(index.Replace(this->Key(0), &values[0]), nullptr);
  EXPECT_EQ(CountOf(index), 51) << "Replace adds an absent key";
  EXPECT_EQ(index.Find(this->Key(0)), &values[0]) << "key 0 is like any other";
  std::set<void *> walked;
  ZnListContext position;
  for (void *value = index.GetFirst(position); value != nullptr; value = index.GetNext(position)) walked.insert(value);
  EXPECT_EQ(walked.size(), 51u);
}

TEST(ZnDictionaryTest, CaseInsensitiveModeStoresLowerCaseKeysAndSwitchesOnlyWhileEmpty) {
  ZnDictionary exact, folded, copy;
  int value = 0;
  exact.Add(ZnString("abc"), &value);
  EXPECT_FALSE(exact.HashCaseInsensitive());
  EXPECT_EQ(exact.Find(ZnString("ABC")), nullptr) << "still exact";
  EXPECT_EQ(exact.Find(ZnString("abc")), &value);

  EXPECT_TRUE(folded.HashCaseInsensitive());
  folded.Add(ZnString("abc"), &value);
  EXPECT_EQ(folded.Find(ZnString("ABC")), &value);
  ZnString key("MiXed");
  folded.Add(key, &value);
  EXPECT_EQ(key, "MiXed") << "the entry lowers a copy of its own";
  std::set<std::string> keys;
  ZnListContext position;
  for (void *found = folded.GetFirst(position); found != nullptr; found = folded.GetNext(position))
    keys.insert(static_cast<char const *>(*static_cast<ZnString *>(position.Key())));
  EXPECT_EQ(keys, (std::set<std::string>{"abc", "mixed"}));

  copy.Add(ZnString("gone"), &value);
  copy.Copy(folded);
  EXPECT_EQ(copy.Find(ZnString("gone")), nullptr);
  EXPECT_EQ(copy.Find(ZnString("MIXED")), &value) << "Copy takes the mode too";
}

TEST(ZnUuidTest, NewIdentifiersDifferAndNullIsZero) {
  ZnUuid first, second;
  EXPECT_NE(first, second);
  EXPECT_TRUE(first != NULL_UUID);
  EXPECT_EQ(first.wData3 >> 12, 4) << "random identifiers are version 4";
  EXPECT_EQ(first.abData4[0] & 0xC0, 0x80) << "of the RFC 4122 variant";
  ZnUuid copy(first);
  EXPECT_EQ(copy, first);
  copy = NULL_UUID;
  EXPECT_TRUE(copy == NULL_UUID);
  EXPECT_TRUE(ZnUuid(NULL_UUID) == NULL_UUID);
}

TEST(ZnUuidTest, TextFormAndOrderFollowTheMemoryLayout) {
  ZnUuid id(NULL_UUID), low(NULL_UUID), high(NULL_UUID);
  EXPECT_EQ(static_cast<ZnString>(id), "00000000-0000-0000-0000-000000000000");
  unsigned char const bytes[16] = {0xCD, 0xAB, 0x23, 0x01, 0x67, 0x45, 0xEF, 0x89,
                                   0xFE, 0xDC, 0xBA, 0x98, 0x76, 0x54, 0x32, 0x10};
  std::memcpy(static_cast<void *>(&id), bytes, sizeof bytes);
  EXPECT_EQ(static_cast<ZnString>(id), "0123abcd-4567-89ef-fedc-ba9876543210") << "the first three fields are little-endian";

  low.udwData1 = 0x0200;   // bytes 00 02 00 00
  high.udwData1 = 0x0001;  // bytes 01 00 00 00
  EXPECT_EQ(low.Compare(high), -1) << "not the numeric order of the first field";
  EXPECT_EQ(high.Compare(low), 1);
  EXPECT_EQ(low.Compare(low), 0);
}

}  // namespace
