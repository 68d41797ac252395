#include <znutil/system/ZnExeFileMapping.h>

#include <cstring>
#include <filesystem>

#include <unistd.h>

#include <gtest/gtest.h>

#include "ImageBuilder.h"
#include "ScratchDirectory.h"

using namespace imagetest;

namespace {

unsigned char *Raw(void *address) { return static_cast<unsigned char *>(address); }

class ZnExeFileMappingTest : public ::testing::Test {
 protected:
  znutil_test::ScratchDirectory folder;
  std::string sample = WriteBytes(folder / "sample.exe", ReadBytes(SampleImagePath()));
};

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

}  // namespace
