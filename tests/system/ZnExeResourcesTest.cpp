#include <znutil/system/ZnExeResources.h>

#include <algorithm>
#include <cstdint>

#include <gtest/gtest.h>

#include "ImageBuilder.h"
#include "ScratchDirectory.h"

using namespace imagetest;

namespace {

unsigned char *Raw(void *address) { return static_cast<unsigned char *>(address); }

char const *Type(std::uintptr_t number) { return reinterpret_cast<char const *>(number); }

// Four resources behind two named type entries. In the resource section: the root at 0 (two named and two
// numbered entries), type 6 at 48, (6,1) at 72 and its data entry at 96, type 16 at 112, (16,1) at 144 and
// its data entries at 176 (0x407) and 192 (0x409), then (16,2) at 208 and its data entry at 232.
Image Tree() {
  return BuildImage({{16, 1, 0x409, {'a', 'a', 'a', 'a'}}, {16, 1, 0x407, {'b', 'b'}}, {16, 2, 0x409, {'c'}},
                     {6, 1, 0x409, {'d', 'd', 'd'}}},
                    2);
}

class ZnExeResourcesTest : public ::testing::Test {
 protected:
  std::string Write(Bytes const &bytes) { return WriteBytes(folder / "image.exe", bytes); }
  znutil_test::ScratchDirectory folder;
};

TEST_F(ZnExeResourcesTest, FindsTheVersionResourceOfARealImage) {
  Bytes const bytes = ReadBytes(SampleImagePath());
  ZnExeResources image(Write(bytes).c_str());
  ASSERT_TRUE(image.IsOpen());
  Bytes const key = {'V', 0, 'S', 0, '_', 0, 'V', 0, 'E', 0, 'R', 0, 'S', 0, 'I', 0, 'O', 0, 'N', 0};
  unsigned char *expected = Raw(image.Address()) + (std::search(bytes.begin(), bytes.end(), key.begin(), key.end()) -
                                                    bytes.begin() - 6);
  EXPECT_EQ(expected, image.FindResourceA(RT_VERSION, 1, 0x409));
  // Only the low 16 bits of the type count; id and language are whole.
  EXPECT_EQ(expected, image.FindResourceA(Type(0x50010), 1, 0x409));
  for (int const id : {0x10001, -65535}) EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, id, 0x409)) << id;
  for (int const language : {0x10409, -64503}) EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, 1, language));
  // The language must match exactly: no neutral fall-back.
  EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, 1, 0));
  EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, 2, 0x409));
  EXPECT_EQ(nullptr, image.FindResourceA(Type(3), 1, 0x409));
}

TEST_F(ZnExeResourcesTest, WalksTypeIdAndLanguageBehindNamedEntries) {
  Image const tree = Tree();
  ZnExeResources image(Write(tree.bytes).c_str());
  unsigned char *base = Raw(image.Address());
  EXPECT_EQ(base + tree.dataOffsets[0], image.FindResourceA(RT_VERSION, 1, 0x409));
  EXPECT_EQ(base + tree.dataOffsets[1], image.FindResourceA(RT_VERSION, 1, 0x407));
  EXPECT_EQ(base + tree.dataOffsets[2], image.FindResourceA(RT_VERSION, 2, 0x409));
  EXPECT_EQ(base + tree.dataOffsets[3], image.FindResourceA(Type(6), 1, 0x409));
  EXPECT_EQ(nullptr, image.FindResourceA(Type(6), 1, 0x407));
  EXPECT_EQ(nullptr, image.FindResourceA(Type(6), 2, 0x409));
  EXPECT_EQ(nullptr, image.FindResourceA(Type(7), 1, 0x409));
}

TEST_F(ZnExeResourcesTest, UpperLevelsMustLeadToDirectories) {
  Image tree = Tree();
  // The first numbered root entry (type 6) now claims to hold data.
  PutDword(tree.bytes, tree.rootIdEntries + 4, Dword(tree.bytes, tree.rootIdEntries + 4) & 0x7FFFFFFF);
  ZnExeResources image(Write(tree.bytes).c_str());
  EXPECT_EQ(nullptr, image.FindResourceA(Type(6), 1, 0x409));
  EXPECT_NE(nullptr, image.FindResourceA(RT_VERSION, 1, 0x409));
}

TEST_F(ZnExeResourcesTest, NoResourcesOrNoViewGiveNull) {
  EXPECT_EQ(nullptr, ZnExeResources().FindResourceA(RT_VERSION, 1, 0x409));
  // Without a section called ".rsrc" the data's address cannot be told (too few directories: DamagedImageTest).
  Bytes unnamed = ReadBytes(SampleImagePath());
  std::copy_n(".data", 6, &unnamed[kResourceSectionHeader]);
  unnamed.resize(std::max<std::size_t>(unnamed.size(), 0x5000));  // room for a wrong address to land in
  ZnExeResources image(Write(unnamed).c_str());
  EXPECT_TRUE(image.IsOpen());
  EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, 1, 0x409));
}

TEST_F(ZnExeResourcesTest, CopiesAndReopenedObjectsSearchTheirOwnView) {
  Image const tree = Tree();
  ZnExeResources image(Write(tree.bytes).c_str());
  ZnExeResources copy(image), assigned;
  assigned = image;
  void *data = image.FindResourceA(RT_VERSION, 1, 0x407);
  ASSERT_NE(nullptr, data);
  EXPECT_EQ(data, copy.FindResourceA(RT_VERSION, 1, 0x407));
  EXPECT_EQ(data, assigned.FindResourceA(RT_VERSION, 1, 0x407));
  image.Close();
  EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, 2, 0x409));
  ASSERT_TRUE(image.Open());
  ASSERT_NE(image.Address(), copy.Address());  // the copies keep the old view
  EXPECT_EQ(Raw(image.Address()) + tree.dataOffsets[2], image.FindResourceA(RT_VERSION, 2, 0x409));
}

TEST_F(ZnExeResourcesTest, OffsetsOutsideTheViewGiveNull) {
  struct Damage {
    char const *what;
    std::size_t offset;  // from the resource section
    std::uint32_t value;
  } const damages[] = {
      {"data beyond the file", 192, 0x7FFFFFF0},
      {"data before the section", 192, 0x10},
      {"data larger than the file", 196, 0x100000},
      {"subdirectory beyond the file", 40 + 4, 0x80000000 | 0x7FFFFF00},
      {"data entry beyond the file", 144 + 16 + 8 + 4, 0x7FFFFF00},
      {"too many numbered entries", 112 + 14, 0xFFFF},
      {"too many named entries", 112 + 12, 0xFFFF},
  };
  for (Damage const &damage : damages) {
    Image tree = Tree();
    if (damage.offset % 4 == 0)
      PutDword(tree.bytes, kResourceRaw + damage.offset, damage.value);
    else
      PutWord(tree.bytes, kResourceRaw + damage.offset, static_cast<std::uint16_t>(damage.value));
    ZnExeResources image(Write(tree.bytes).c_str());
    EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, 1, 0x409)) << damage.what;
  }
}

}  // namespace
