#include <znutil/system/ZnExeResources.h>

#include <algorithm>
#include <cstdint>

#include <gtest/gtest.h>

#include "ImageBuilder.h"

using namespace imagetest;

namespace {

unsigned char *Raw(void *address) { return static_cast<unsigned char *>(address); }

// Offset of the version block in the sample, found by its key.
std::size_t VersionBlockOffset(Bytes const &bytes) {
  Bytes const key = {'V', 0, 'S', 0, '_', 0, 'V', 0, 'E', 0, 'R', 0, 'S', 0, 'I', 0, 'O', 0, 'N', 0};
  return static_cast<std::size_t>(std::search(bytes.begin(), bytes.end(), key.begin(), key.end()) - bytes.begin()) - 6;
}

class ZnExeResourcesTest : public ::testing::Test {
 protected:
  // Four resources behind two named type entries.
  Image Tree() {
    ImageOptions options;
    options.namedTypes = 2;
    return BuildImage({{16, 1, 0x409, {'a', 'a', 'a', 'a'}},
                       {16, 1, 0x407, {'b', 'b'}},
                       {16, 2, 0x409, {'c'}},
                       {6, 1, 0x409, {'d', 'd', 'd'}}},
                      options);
  }

  TempDirectory folder;
};

TEST_F(ZnExeResourcesTest, FindsTheVersionResourceOfARealImage) {
  Bytes const bytes = ReadBytes(SampleImagePath());
  ZnExeResources image(folder.Write("sample.exe", bytes).c_str());
  ASSERT_TRUE(image.IsOpen());
  unsigned char *expected = Raw(image.Address()) + VersionBlockOffset(bytes);
  EXPECT_EQ(expected, image.FindResourceA(RT_VERSION, 1, 0x409));
  // Only the low 16 bits of the type count.
  EXPECT_EQ(expected, image.FindResourceA(reinterpret_cast<char const *>(std::uintptr_t{0x50010}), 1, 0x409));
  EXPECT_EQ(expected, image.FindResourceA(RT_VERSION, 0x10001, 0x10409));
  // The language must match exactly: no neutral fall-back.
  EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, 1, 0));
  EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, 2, 0x409));
  EXPECT_EQ(nullptr, image.FindResourceA(MAKEINTRESOURCEA(3), 1, 0x409));
}

TEST_F(ZnExeResourcesTest, WalksTypeIdAndLanguageBehindNamedEntries) {
  Image const tree = Tree();
  ZnExeResources image(folder.Write("tree.exe", tree.bytes).c_str());
  unsigned char *base = Raw(image.Address());
  EXPECT_EQ(base + tree.dataOffsets[0], image.FindResourceA(RT_VERSION, 1, 0x409));
  EXPECT_EQ(base + tree.dataOffsets[1], image.FindResourceA(RT_VERSION, 1, 0x407));
  EXPECT_EQ(base + tree.dataOffsets[2], image.FindResourceA(RT_VERSION, 2, 0x409));
  EXPECT_EQ(base + tree.dataOffsets[3], image.FindResourceA(MAKEINTRESOURCEA(6), 1, 0x409));
  EXPECT_EQ(nullptr, image.FindResourceA(MAKEINTRESOURCEA(6), 1, 0x407));
  EXPECT_EQ(nullptr, image.FindResourceA(MAKEINTRESOURCEA(6), 2, 0x409));
  EXPECT_EQ(nullptr, image.FindResourceA(MAKEINTRESOURCEA(7), 1, 0x409));
}

TEST_F(ZnExeResourcesTest, UpperLevelsMustLeadToDirectories) {
  Image tree = Tree();
  // The first numbered root entry (type 6) now claims to hold data.
  PutDword(tree.bytes, tree.rootIdEntries + 4, Dword(tree.bytes, tree.rootIdEntries + 4) & 0x7FFFFFFF);
  ZnExeResources image(folder.Write("flat.exe", tree.bytes).c_str());
  EXPECT_EQ(nullptr, image.FindResourceA(MAKEINTRESOURCEA(6), 1, 0x409));
  EXPECT_NE(nullptr, image.FindResourceA(RT_VERSION, 1, 0x409));
}

TEST_F(ZnExeResourcesTest, NoResourcesOrNoViewGiveNull) {
  ImageOptions options;
  options.numberOfRvaAndSizes = 2;
  ZnExeResources without(folder.Write("none.exe", BuildImage({{16, 1, 0x409, {1}}}, options).bytes).c_str());
  EXPECT_TRUE(without.IsOpen());
  EXPECT_EQ(nullptr, without.FindResourceA(RT_VERSION, 1, 0x409));
  ZnExeResources closed;
  EXPECT_EQ(nullptr, closed.FindResourceA(RT_VERSION, 1, 0x409));
  // Without a section called ".rsrc" the data's address cannot be told.
  options = ImageOptions();
  options.resourceSectionName = ".data";
  ZnExeResources unnamed(folder.Write("unnamed.exe", BuildImage({{16, 1, 0x409, {1}}}, options).bytes).c_str());
  EXPECT_EQ(nullptr, unnamed.FindResourceA(RT_VERSION, 1, 0x409));
}

TEST_F(ZnExeResourcesTest, SearchesAgainAfterReopening) {
  Image const tree = Tree();
  ZnExeResources image(folder.Write("tree.exe", tree.bytes).c_str());
  ASSERT_NE(nullptr, image.FindResourceA(RT_VERSION, 2, 0x409));
  image.Close();
  EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, 2, 0x409));
  ASSERT_TRUE(image.Open());
  EXPECT_EQ(Raw(image.Address()) + tree.dataOffsets[2], image.FindResourceA(RT_VERSION, 2, 0x409));
}

TEST_F(ZnExeResourcesTest, CopiesFindTheSameData) {
  ZnExeResources image(folder.Write("tree.exe", Tree().bytes).c_str());
  ZnExeResources copy(image);
  ZnExeResources assigned;
  assigned = image;
  void *data = image.FindResourceA(RT_VERSION, 1, 0x407);
  ASSERT_NE(nullptr, data);
  EXPECT_EQ(data, copy.FindResourceA(RT_VERSION, 1, 0x407));
  EXPECT_EQ(data, assigned.FindResourceA(RT_VERSION, 1, 0x407));
}

TEST_F(ZnExeResourcesTest, OffsetsOutsideTheViewGiveNull) {
  struct Damage {
    char const *what;
    std::size_t offset;  // from the resource section
    std::uint32_t value;
  };
  // In Tree(): root at 0 (two named and two numbered entries), type 6 at 48,
  // type 16 at 72, the directories of (6,1) at 104, (16,1) at 128, (16,2)
  // at 160, and the data entries from 184, (16,1,0x409) first.
  Damage const damages[] = {
      {"data beyond the file", 184, 0x7FFFFFF0},
      {"data before the section", 184, 0x10},
      {"data larger than the file", 188, 0x100000},
      {"subdirectory beyond the file", 32 + 8 + 4, 0x80000000 | 0x7FFFFF00},
      {"data entry beyond the file", 128 + 16 + 8 + 4, 0x7FFFFF00},
      {"too many numbered entries", 72 + 14, 0xFFFF},
      {"too many named entries", 72 + 12, 0xFFFF},
  };
  for (Damage const &damage : damages) {
    Image tree = Tree();
    if (damage.offset % 4 == 0)
      PutDword(tree.bytes, kResourceRaw + damage.offset, damage.value);
    else
      PutWord(tree.bytes, kResourceRaw + damage.offset, static_cast<std::uint16_t>(damage.value));
    ZnExeResources image(folder.Write("damaged.exe", tree.bytes).c_str());
    EXPECT_EQ(nullptr, image.FindResourceA(RT_VERSION, 1, 0x409)) << damage.what;
  }
}

}  // namespace
