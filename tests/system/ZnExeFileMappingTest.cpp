// Reading PE images through a writable view of the file: ZnExeFileMapping finds the headers and directories,
// ZnExeResources walks the resource tree.
#include <znutil/system/ZnExeFileMapping.h>
#include <znutil/system/ZnExeResources.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>

#include <unistd.h>

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

// A scratch folder holding a copy of the sample image at `sample`.
class ZnExeFileMappingTest : public ::testing::Test {
 protected:
  std::string Write(Bytes const &bytes) { return WriteBytes(folder / "image.exe", bytes); }
  znutil_test::ScratchDirectory folder;
  std::string sample = WriteBytes(folder / "sample.exe", ReadBytes(SampleImagePath()));
};
using ZnExeResourcesTest = ZnExeFileMappingTest;

TEST_F(ZnExeFileMappingTest, FindsTheHeadersOfARealImage) {
  ZnExeFileMapping image(sample.c_str());
  ASSERT_TRUE(image.IsOpen());
  unsigned char *base = Raw(image.Address());
  unsigned char *signature = Raw(image.NTSignatureAddress());
  EXPECT_EQ(signature, base + Dword(ReadBytes(sample), 60));
  EXPECT_EQ(0, std::memcmp(signature, "PE\0\0", 4));
  EXPECT_EQ(Raw(image.PEFileHeaderAddress()), signature + 4);
  EXPECT_EQ(Raw(image.OptHeaderAddress()), signature + 24);
  EXPECT_EQ(Raw(image.SectionHeaderAddress()), signature + 248);
  EXPECT_EQ(0x10B, Raw(image.OptHeaderAddress())[0] | Raw(image.OptHeaderAddress())[1] << 8);
  EXPECT_EQ(kSampleSections, image.NumberOfSections());

  IMAGE_SECTION_HEADER resources;
  ASSERT_TRUE(image.GetSectionHeaderByName(&resources, ".rsrc"));
  EXPECT_EQ(kResourceVirtual, resources.VirtualAddress);
  EXPECT_EQ(kResourceRaw, resources.PointerToRawData);
  // Case matters, and whole names only.
  EXPECT_FALSE(image.GetSectionHeaderByName(&resources, ".RSRC") || image.GetSectionHeaderByName(&resources, ".rsr"));
  EXPECT_EQ(base + kResourceRaw, image.GetDirectoryAddress(IMAGE_DIRECTORY_ENTRY_RESOURCE));
}

// Section names of all eight bytes have no terminator.
TEST_F(ZnExeFileMappingTest, DirectoryIndexAtOrBeyondTheCountGivesNullAndLongSectionNamesMatch) {
  Bytes bytes = ReadBytes(sample);
  PutDword(bytes, kOptionalHeader + 92, 3);
  std::memcpy(&bytes[kResourceSectionHeader], ".rsrcdat", 8);
  ZnExeFileMapping image(WriteBytes(sample, bytes).c_str());
  EXPECT_EQ(Raw(image.Address()) + kResourceRaw, image.GetDirectoryAddress(2));
  // At or beyond the count, and 0, an address in no section.
  for (ZnULong index : {3u, 0xFFFFFFFFu, 0u}) EXPECT_EQ(nullptr, image.GetDirectoryAddress(index)) << index;
  IMAGE_SECTION_HEADER header;
  EXPECT_TRUE(image.GetSectionHeaderByName(&header, ".rsrcdat"));
  EXPECT_EQ(kResourceVirtual, header.VirtualAddress);
  EXPECT_FALSE(image.GetSectionHeaderByName(&header, ".rsrc") || image.GetSectionHeaderByName(&header, ".rsrcdata"));
  EXPECT_TRUE(image.GetSectionHeaderByName(&header, ".text"));
  EXPECT_EQ(0x1000u, header.VirtualAddress);
}

TEST_F(ZnExeFileMappingTest, ClosedOrUnmappableGivesNothingAndDoesNotCrash) {
  ZnExeFileMapping image;
  EXPECT_FALSE(image.Open());  // no path
  for (void *address : {image.Address(), image.NTSignatureAddress(), image.PEFileHeaderAddress(),
                         image.OptHeaderAddress(), image.SectionHeaderAddress(), image.GetDirectoryAddress(2)}) {
    EXPECT_EQ(nullptr, address);
  }
  IMAGE_SECTION_HEADER header;
  EXPECT_EQ(0, image.NumberOfSections());
  EXPECT_FALSE(image.GetSectionHeaderByName(&header, ".rsrc"));
  EXPECT_TRUE(image.Close());

  EXPECT_FALSE(image.Open((folder / "missing.exe").c_str()) || image.IsOpen());
  EXPECT_FALSE(ZnExeFileMapping(folder.Path().c_str()).IsOpen());
  EXPECT_FALSE(ZnExeFileMapping(WriteBytes(folder / "empty.exe", {}).c_str()).IsOpen());
  // A file that cannot be written cannot be opened even to read.
  std::filesystem::permissions(sample, std::filesystem::perms::owner_read);
  EXPECT_EQ(ZnExeFileMapping(sample.c_str()).IsOpen(), access(sample.c_str(), W_OK) == 0);
}

TEST_F(ZnExeFileMappingTest, OpenWhileOpenKeepsTheViewAndTheNewPathForLater) {
  std::string const other = WriteBytes(folder / "other.exe", {'Z', 'Z'});
  ZnExeFileMapping image(sample.c_str());
  void *view = image.Address();
  EXPECT_FALSE(image.Open(other.c_str()));
  EXPECT_EQ(view, image.Address());
  EXPECT_EQ('M', Raw(image.Address())[0]);
  EXPECT_TRUE(image.Close() && image.Close());
  ASSERT_TRUE(image.Open());
  EXPECT_EQ('Z', Raw(image.Address())[0]);
}

TEST_F(ZnExeFileMappingTest, WritesLandInTheFileAndOtherViewsSeeThem) {
  ZnExeFileMapping writer(sample.c_str()), reader(sample.c_str());
  ASSERT_TRUE(writer.IsOpen() && reader.IsOpen());
  EXPECT_NE(writer.Address(), reader.Address());
  Raw(writer.Address())[2] = 0x5A;
  EXPECT_EQ(0x5A, Raw(reader.Address())[2]);
  writer.Close();
  reader.Close();
  EXPECT_EQ(0x5A, ReadBytes(sample)[2]);
}

TEST_F(ZnExeFileMappingTest, CopiesShareTheViewUntilTheLastOneCloses) {
  auto *original = new ZnExeFileMapping(sample.c_str());
  ZnExeFileMapping copy(*original);
  ZnExeFileMapping assigned;
  assigned = *original;
  EXPECT_EQ(original->Address(), copy.Address());
  EXPECT_EQ(original->Address(), assigned.Address());
  Raw(copy.Address())[3] = 0x42;
  EXPECT_EQ(0x42, Raw(original->Address())[3]);
  delete original;  // the copies still read the file through the view
  EXPECT_EQ(kSampleSections, copy.NumberOfSections());
  assigned = copy;
  copy.Close();
  EXPECT_EQ(kSampleSections, assigned.NumberOfSections());
  // A copy keeps its own path, so it can open again after its view is gone.
  assigned.Close();
  EXPECT_TRUE(assigned.Open());
  EXPECT_EQ(0x42, Raw(assigned.Address())[3]);
}

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
