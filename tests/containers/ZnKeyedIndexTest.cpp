#include <znutil/containers/ZnDictionary.h>
#include <znutil/containers/ZnIndex.h>
#include <znutil/containers/ZnIndex64.h>
#include <znutil/containers/ZnUuidIndex.h>

#include <set>
#include <string>
#include <vector>

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

template <typename Index>
class ZnKeyedIndexTest : public ::testing::Test {
 protected:
  auto Key(int n) { return KeyOf(static_cast<Index *>(nullptr), n); }
  Index index;
  int values[100] = {};
};

using IndexTypes = ::testing::Types<ZnIndex, ZnIndex64, ZnDictionary, ZnUuidIndex>;
TYPED_TEST_SUITE(ZnKeyedIndexTest, IndexTypes);

TYPED_TEST(ZnKeyedIndexTest, AddKeepsTheFirstValue) {
  EXPECT_EQ(this->index.Add(this->Key(1), &this->values[1]), nullptr);
  EXPECT_EQ(this->index.Add(this->Key(1), &this->values[2]), &this->values[1]);
  EXPECT_EQ(this->index.Find(this->Key(1)), &this->values[1]);
  EXPECT_EQ(this->index.Find(this->Key(2)), nullptr);
}

TYPED_TEST(ZnKeyedIndexTest, ReplaceStoresInAnyCase) {
  ZnHashTableStatistics before;
  this->index.Statistics(&before, 1);
  EXPECT_EQ(this->index.Replace(this->Key(3), &this->values[3]), nullptr);
  ZnHashTableStatistics after;
  this->index.Statistics(&after, 1);
  EXPECT_EQ(after.iItemCount, before.iItemCount + 1);
  EXPECT_EQ(this->index.Replace(this->Key(3), &this->values[4]), &this->values[3]);
  EXPECT_EQ(this->index.Find(this->Key(3)), &this->values[4]);
}

TYPED_TEST(ZnKeyedIndexTest, DeleteTwiceGivesNullTheSecondTime) {
  this->index.Add(this->Key(0), &this->values[0]);
  EXPECT_EQ(this->index.Find(this->Key(0)), &this->values[0]) << "key 0 is like any other";
  EXPECT_EQ(this->index.Delete(this->Key(0)), &this->values[0]);
  EXPECT_EQ(this->index.Delete(this->Key(0)), nullptr);
  EXPECT_EQ(this->index.Find(this->Key(0)), nullptr);
}

TYPED_TEST(ZnKeyedIndexTest, ManyKeysSurviveGrowthAndAWalk) {
  this->index.MakeDynamic(75);
  for (int n = 0; n < 100; ++n) EXPECT_EQ(this->index.Add(this->Key(n), &this->values[n]), nullptr);
  for (int n = 0; n < 100; n += 2) EXPECT_EQ(this->index.Delete(this->Key(n)), &this->values[n]);
  for (int n = 0; n < 100; ++n) EXPECT_EQ(this->index.Find(this->Key(n)), n % 2 ? &this->values[n] : nullptr);
  std::set<void *> walked;
  ZnListContext position;
  for (void *value = this->index.GetFirst(position); value != nullptr; value = this->index.GetNext(position))
    walked.insert(value);
  EXPECT_EQ(walked.size(), 50u);
}

TEST(ZnDictionaryTest, CaseInsensitiveModeStoresLowerCaseKeys) {
  ZnDictionary dictionary;
  int value = 0;
  EXPECT_TRUE(dictionary.HashCaseInsensitive());
  dictionary.Add(ZnString("abc"), &value);
  EXPECT_EQ(dictionary.Find(ZnString("ABC")), &value);
  dictionary.Add(ZnString("MiXed"), &value);
  std::set<std::string> keys;
  ZnListContext position;
  for (void *found = dictionary.GetFirst(position); found != nullptr; found = dictionary.GetNext(position))
    keys.insert(static_cast<char const *>(*static_cast<ZnString *>(position.Key())));
  EXPECT_EQ(keys, (std::set<std::string>{"abc", "mixed"}));
  ZnString key("KeepsItsCase");
  dictionary.Add(key, &value);
  EXPECT_EQ(key, "KeepsItsCase") << "the entry lowers a copy of its own";
}

TEST(ZnDictionaryTest, ModeSwitchesOnlyWhileEmpty) {
  ZnDictionary dictionary;
  int value = 0;
  dictionary.Add(ZnString("abc"), &value);
  EXPECT_FALSE(dictionary.HashCaseInsensitive());
  EXPECT_EQ(dictionary.Find(ZnString("ABC")), nullptr) << "still exact";
  EXPECT_EQ(dictionary.Find(ZnString("abc")), &value);
}

TEST(ZnDictionaryTest, CopyTakesEntriesAndMode) {
  ZnDictionary source;
  source.HashCaseInsensitive();
  int value = 0;
  source.Add(ZnString("Key"), &value);
  ZnDictionary copy;
  int other = 0;
  copy.Add(ZnString("gone"), &other);
  copy.Copy(source);
  EXPECT_EQ(copy.Find(ZnString("gone")), nullptr);
  EXPECT_EQ(copy.Find(ZnString("KEY")), &value);
}

TEST(ZnUuidTest, NewIdentifiersAreRandomVersionFour) {
  ZnUuid first, second;
  EXPECT_NE(first, second);
  EXPECT_TRUE(first != NULL_UUID);
  EXPECT_EQ(first.wData3 >> 12, 4);
  EXPECT_EQ(first.abData4[0] & 0xC0, 0x80);
  ZnUuid copy(first);
  EXPECT_EQ(copy, first);
  copy.Create();
  EXPECT_NE(copy, first);
}

TEST(ZnUuidTest, NullIdentifier) {
  EXPECT_TRUE(ZnUuid(NULL_UUID) == NULL_UUID);
  ZnUuid id;
  id = NULL_UUID;
  EXPECT_TRUE(id == NULL_UUID);
  EXPECT_EQ(static_cast<ZnString>(id), "00000000-0000-0000-0000-000000000000");
}

TEST(ZnUuidTest, TextFormPrintsTheLittleEndianFields) {
  ZnUuid id(NULL_UUID);
  id.udwData1 = 0x0123ABCD;
  id.wData2 = 0x4567;
  id.wData3 = 0x89EF;
  unsigned char const tail[8] = {0xFE, 0xDC, 0xBA, 0x98, 0x76, 0x54, 0x32, 0x10};
  for (int i = 0; i < 8; ++i) id.abData4[i] = tail[i];
  EXPECT_EQ(static_cast<ZnString>(id), "0123abcd-4567-89ef-fedc-ba9876543210");
}

TEST(ZnUuidTest, CompareFollowsMemoryOrder) {
  ZnUuid low(NULL_UUID), high(NULL_UUID);
  low.udwData1 = 0x0200;   // bytes 00 02 00 00
  high.udwData1 = 0x0001;  // bytes 01 00 00 00
  EXPECT_EQ(low.Compare(high), -1) << "not the numeric order of the first field";
  EXPECT_EQ(high.Compare(low), 1);
  EXPECT_EQ(low.Compare(low), 0);
  EXPECT_EQ(ZnUuid(NULL_UUID).Hash(), ZnUuid(NULL_UUID).Hash());
}

}  // namespace
