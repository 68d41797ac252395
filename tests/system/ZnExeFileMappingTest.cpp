#include <znutil/system/ZnExeFileMapping.h>

#include <cstring>
#include <filesystem>

#include <gtest/gtest.h>

#include "ImageBuilder.h"

using namespace imagetest;

namespace {

// Facts of the committed sample image, as its build tools laid it out.
constexpr int kSampleSections = 5;
constexpr std::uint32_t kSampleResourceVirtual = 0x4000;
constexpr std::uint32_t kSampleResourceRaw = 0xA00;

unsigned char *Raw(void *address) { return static_cast<unsigned char *>(address); }

class ZnExeFileMappingTest : public ::testing::Test {
 protected:
  TempDirectory folder;
  std::string sample = folder.Write("sample.exe", ReadBytes(SampleImagePath()));
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
  EXPECT_EQ(kSampleResourceVirtual, resources.VirtualAddress);
  EXPECT_EQ(kSampleResourceRaw, resources.PointerToRawData);
  EXPECT_FALSE(image.GetSectionHeaderByName(&resources, ".RSRC"));  // case matters
  EXPECT_FALSE(image.GetSectionHeaderByName(&resources, ".rsr"));   // whole names only
  EXPECT_EQ(base + kSampleResourceRaw, image.GetDirectoryAddress(IMAGE_DIRECTORY_ENTRY_RESOURCE));
}

TEST_F(ZnExeFileMappingTest, DirectoryIndexAtOrBeyondTheCountGivesNull) {
  ImageOptions options;
  options.numberOfRvaAndSizes = 3;
  std::string const path =
      folder.Write("three.exe", BuildImage({{16, 1, 0x409, Serialize(TypicalVersionInfo())}}, options).bytes);
  ZnExeFileMapping image(path.c_str());
  EXPECT_EQ(Raw(image.Address()) + kResourceRaw, image.GetDirectoryAddress(2));
  EXPECT_EQ(nullptr, image.GetDirectoryAddress(3));
  EXPECT_EQ(nullptr, image.GetDirectoryAddress(0xFFFFFFFF));
  // A directory at address 0 lies in no section.
  EXPECT_EQ(nullptr, image.GetDirectoryAddress(0));
}

TEST_F(ZnExeFileMappingTest, ClosedMappingGivesNothingAndDoesNotCrash) {
  ZnExeFileMapping image;
  EXPECT_FALSE(image.IsOpen());
  EXPECT_FALSE(image.Open());  // no path
  IMAGE_SECTION_HEADER header;
  EXPECT_EQ(nullptr, image.Address());
  EXPECT_EQ(nullptr, image.NTSignatureAddress());
  EXPECT_EQ(nullptr, image.PEFileHeaderAddress());
  EXPECT_EQ(nullptr, image.OptHeaderAddress());
  EXPECT_EQ(nullptr, image.SectionHeaderAddress());
  EXPECT_EQ(0, image.NumberOfSections());
  EXPECT_FALSE(image.GetSectionHeaderByName(&header, ".rsrc"));
  EXPECT_EQ(nullptr, image.GetDirectoryAddress(2));
  EXPECT_TRUE(image.Close());
}

TEST_F(ZnExeFileMappingTest, FilesThatCannotBeMappedFail) {
  EXPECT_FALSE(ZnExeFileMapping((folder.Path() / "missing.exe").c_str()).IsOpen());
  EXPECT_FALSE(ZnExeFileMapping(folder.Path().c_str()).IsOpen());
  EXPECT_FALSE(ZnExeFileMapping(folder.Write("empty.exe", {}).c_str()).IsOpen());
  ZnExeFileMapping image;
  EXPECT_FALSE(image.Open((folder.Path() / "missing.exe").c_str()));
  EXPECT_FALSE(image.IsOpen());
}

TEST_F(ZnExeFileMappingTest, ReadOnlyFileCannotBeOpenedEvenToRead) {
  std::filesystem::permissions(sample, std::filesystem::perms::owner_read);
  ZnExeFileMapping image(sample.c_str());
  bool const opened = image.IsOpen();
  std::filesystem::permissions(sample, std::filesystem::perms::owner_all);
  if (opened) GTEST_SKIP() << "running with the right to write any file";
  EXPECT_FALSE(opened);
}

TEST_F(ZnExeFileMappingTest, OpenWhileOpenKeepsTheViewAndTheNewPathForLater) {
  std::string const other = folder.Write("other.exe", {'Z', 'Z'});
  ZnExeFileMapping image(sample.c_str());
  void *view = image.Address();
  EXPECT_FALSE(image.Open(other.c_str()));
  EXPECT_EQ(view, image.Address());
  EXPECT_EQ('M', Raw(image.Address())[0]);
  EXPECT_TRUE(image.Close());
  EXPECT_TRUE(image.Close());
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
  // The original goes, and the copies still read the file through the view.
  delete original;
  EXPECT_TRUE(copy.IsOpen());
  EXPECT_EQ(kSampleSections, copy.NumberOfSections());
  assigned = copy;
  copy.Close();
  EXPECT_EQ(kSampleSections, assigned.NumberOfSections());
  // A copy keeps its own path, so it can open again after its view is gone.
  assigned.Close();
  EXPECT_TRUE(assigned.Open());
  EXPECT_EQ(0x42, Raw(assigned.Address())[3]);
}

TEST_F(ZnExeFileMappingTest, SectionNamesOfAllEightBytesHaveNoTerminator) {
  ImageOptions options;
  options.resourceSectionName = ".rsrcdat";
  std::string const path = folder.Write("eight.exe", BuildImage({{16, 1, 0x409, {1, 2, 3, 4}}}, options).bytes);
  ZnExeFileMapping image(path.c_str());
  IMAGE_SECTION_HEADER header;
  EXPECT_TRUE(image.GetSectionHeaderByName(&header, ".rsrcdat"));
  EXPECT_EQ(kResourceVirtual, header.VirtualAddress);
  EXPECT_FALSE(image.GetSectionHeaderByName(&header, ".rsrc"));
  EXPECT_FALSE(image.GetSectionHeaderByName(&header, ".rsrcdata"));
  EXPECT_TRUE(image.GetSectionHeaderByName(&header, ".text"));
  EXPECT_EQ(0x1000u, header.VirtualAddress);
}

}  // namespace
