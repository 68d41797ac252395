#include <znutil/configuration/ZnCfgSectionList.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include <znutil/configuration/ZnCfgBinaryData.h>
#include <znutil/configuration/ZnCfgEntryList.h>
#include <znutil/configuration/ZnCfgFloatData.h>
#include <znutil/configuration/ZnCfgIntegerData.h>
#include <znutil/configuration/ZnCfgParserBinaryStream.h>
#include <znutil/configuration/ZnCfgTextData.h>
#include <znutil/configuration/ZnCfgTokenInfo.h>

#include "../memory/BlockHeader.h"

namespace {

// What the eight reads of one value give, joined by "|": the four reads,
// then the four conversions; "-" for a refused read.
std::string ReadAll(ZnCfgData const &data) {
  int i = 0;
  float f = 0;
  ZnString t;
  ZnBinary b;
  auto integer = [&](bool ok) { return ok ? std::to_string(i) : "-"; };
  auto floating = [&](bool ok) { return ok ? std::to_string(f) : "-"; };
  auto text = [&](bool ok) { return ok ? std::string(t.Chars()) : "-"; };
  auto binary = [&](bool ok) { return ok ? std::string(b.Dump(false).Chars()) : "-"; };
  return integer(data.GetInteger(&i)) + "|" + floating(data.GetFloat(&f)) + "|" + text(data.GetText(&t)) + "|" +
         binary(data.GetBinary(&b)) + "|" + integer(data.ConvertToInteger(&i)) + "|" +
         floating(data.ConvertToFloat(&f)) + "|" + text(data.ConvertToText(&t)) + "|" + binary(data.ConvertToBinary(&b));
}

TEST(ZnCfgDataTest, ReadsAndConversionsFollowTheTypeTable) {
  EXPECT_EQ(ReadAll(ZnCfgTextData("12.5ab")), "-|-|12.5ab|-|12|12.500000|12.5ab|x31,x32,x2e,x35,x61,x62");
  EXPECT_EQ(ReadAll(ZnCfgTextData("abc")), "-|-|abc|-|0|0.000000|abc|x61,x62,x63");
  EXPECT_EQ(ReadAll(ZnCfgBinaryData(ZnBinary(ZnString("12")))), "-|-|-|x31,x32|-|-|-|x31,x32");
  EXPECT_EQ(ReadAll(ZnCfgIntegerData(-7)), "-7|-|-|-|-7|-7.000000|-7|xf9,xff,xff,xff");
  EXPECT_EQ(ReadAll(ZnCfgFloatData(-2.75f)), "-|-2.750000|-|-|-2|-2.750000|-2.750000|x00,x00,x30,xc0");
  EXPECT_EQ(ReadAll(ZnCfgFloatData(1e10f)),
            "-|10000000000.000000|-|-|-2147483648|10000000000.000000|10000000000.000000|xf9,x02,x15,x50");
  int truncated = 0;
  ZnCfgFloatData(std::nanf("")).ConvertToInteger(&truncated);
  EXPECT_EQ(truncated, std::numeric_limits<int>::min());
}

// The type number, the type tag and the value as the writer writes them.
std::string Formatted(ZnCfgData const &data) {
  return std::to_string(data.DataType()) + " " + data.FormatType().Chars() + " " + data.FormatValue().Chars();
}

TEST(ZnCfgDataTest, FormatsValueAndType) {
  EXPECT_EQ(Formatted(ZnCfgTextData("Main \"view\"\\\x01\t")), "1 (text) \"Main \\\"view\\\"\\\\\\x001\\t\"");
  EXPECT_EQ(Formatted(ZnCfgBinaryData(ZnBinary())), "2 (binary) ");
  EXPECT_EQ(Formatted(ZnCfgIntegerData(1024)), "3 (integer) 1024");
  EXPECT_EQ(Formatted(ZnCfgFloatData(1.0f)), "4 (float) x00,x00,x80,x3f");
}

TEST(ZnCfgTreeTest, EntriesAreNameAndMachineJoinedWithoutCase) {
  ZnCfgEntry const ab_c("ab", "c", nullptr), a_bc("A", "BC", nullptr), a_bd("a", "bd", nullptr);
  EXPECT_EQ(ab_c.CompareTo(a_bc), 0);
  EXPECT_LT(ab_c.CompareTo(a_bd), 0);
  EXPECT_GT(a_bd.CompareTo(a_bc), 0);
  EXPECT_LT(ZnCfgEntry("a", "", nullptr).CompareTo(a_bc), 0);
  EXPECT_EQ(ZnCfgSection("Display", nullptr).CompareTo(ZnCfgSection("DISPLAY", nullptr)), 0);
  EXPECT_LT(ZnCfgSection("Audio", nullptr).CompareTo(ZnCfgSection("display", nullptr)), 0);
}

TEST(ZnCfgTreeTest, ListsAdoptWhatTheyTakeAndFindByKey) {
  ZnCfgSectionList sections;
  auto *entries = new ZnCfgEntryList;
  EXPECT_TRUE(entries->Add(new ZnCfgEntry("Port", "all", new ZnCfgIntegerData(80))));
  std::unique_ptr<ZnCfgEntry> again(new ZnCfgEntry("PORT", "ALL", new ZnCfgIntegerData(81)));
  EXPECT_FALSE(entries->Add(again.get()));  // refused: still the caller's
  EXPECT_TRUE(entries->Replace(new ZnCfgEntry("port", "all", new ZnCfgIntegerData(82))));  // destroys Port
  EXPECT_TRUE(entries->Replace(entries->FindEntry("port", "all")));  // by itself: kept alive
  EXPECT_TRUE(sections.Add(new ZnCfgSection("Network", entries)));
  std::unique_ptr<ZnCfgSection> duplicate(new ZnCfgSection("NETWORK", nullptr));
  EXPECT_FALSE(sections.Add(duplicate.get()));

  ZnCfgSection *network = sections.FindSection("network");
  ASSERT_NE(network, nullptr);
  EXPECT_EQ(sections.FindSection("Display"), nullptr);
  ZnCfgEntry *found = network->Entries()->FindEntry("Port", "All");
  ASSERT_NE(found, nullptr);
  int value = 0;
  EXPECT_TRUE(found->Data()->GetInteger(&value));
  EXPECT_EQ(value, 82);
  EXPECT_EQ(network->Entries()->FindEntry("Port", "alpha7"), nullptr);
  found->SetData(new ZnCfgTextData("x"));
  EXPECT_EQ(found->Data()->DataType(), ZnCfgData::CfgText);
  EXPECT_STREQ(found->Name().Chars(), "port");
  EXPECT_STREQ(found->Machine().Chars(), "all");
}

// Every object of the tree comes from the fixed-block allocator.
TEST(ZnCfgTreeTest, ObjectsLiveInTheFixedBlockAllocator) {
  auto expectBlocks = [](auto *...objects) {  // each in use, from a size class
    ([&] { EXPECT_EQ(znutil_test::StateTag(objects), 5) << typeid(*objects).name(); delete objects; }(), ...);
  };
  expectBlocks(new ZnCfgTextData("t"), new ZnCfgBinaryData(ZnBinary()), new ZnCfgIntegerData(1), new ZnCfgFloatData(1),
               new ZnCfgEntry("n", "all", nullptr), new ZnCfgSection("s", nullptr), new ZnCfgEntryList,
               new ZnCfgSectionList, new ZnCfgParserBinaryStream, new ZnCfgTokenInfo);
}

TEST(ZnCfgTreeTest, NothingIsTrackedWithoutAParse) {
  ZnCfgIntegerData data(1);
  EXPECT_FALSE(data.Release());
  ZnCfgEntryList untracked(false);
  EXPECT_FALSE(static_cast<ZnCfgFileParserItem &>(untracked).Release());
}

// The small file of the format's description, built in memory and written.
TEST(ZnCfgTreeTest, WritesTheExampleFileLineByLine) {
  ZnCfgSectionList sections;
  auto *display = new ZnCfgEntryList;
  unsigned char const pattern[] = {1, 2, 0xff};
  ZnBinary bytes;
  bytes.Store(pattern, 3);
  display->Add(new ZnCfgEntry("Width", "all", new ZnCfgIntegerData(1024)));
  display->Add(new ZnCfgEntry("Title", "all", new ZnCfgTextData("Main \"view\"")));
  display->Add(new ZnCfgEntry("Scale", "all", new ZnCfgFloatData(1.0f)));
  display->Add(new ZnCfgEntry("Pattern", "all", new ZnCfgBinaryData(bytes)));
  auto *network = new ZnCfgEntryList;
  network->Add(new ZnCfgEntry("Port", "alpha7", new ZnCfgIntegerData(8080)));
  network->Add(new ZnCfgEntry("Port", "all", new ZnCfgIntegerData(80)));
  sections.Add(new ZnCfgSection("Network", network));
  sections.Add(new ZnCfgSection("Display", display));
  sections.Add(new ZnCfgSection("Empty", new ZnCfgEntryList));
  EXPECT_STREQ(sections.FormatFile().Chars(),
               "section \"Display\"\r\n"
               "\"Pattern\" (all) =(binary) x01,x02,xff\r\n"
               "\"Scale\" (all) =(float) x00,x00,x80,x3f\r\n"
               "\"Title\" (all) =(text) \"Main \\\"view\\\"\"\r\n"
               "\"Width\" (all) =(integer) 1024\r\n"
               "\r\n"
               "section \"Empty\"\r\n"
               "\r\n"
               "section \"Network\"\r\n"
               "\"Port\" (all) =(integer) 80\r\n"
               "\"Port\" (alpha7) =(integer) 8080\r\n"
               "\r\n");
  EXPECT_STREQ(ZnCfgSectionList().FormatFile().Chars(), "");
}

}  // namespace
