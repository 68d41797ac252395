// Truncated, corrupted and hostile images: every member gives false or null
// or a value read from inside the file, and nothing reads outside it.
//
// The images here are one page long, and each is mapped where a page that
// cannot be read follows it, so that a read behind the end of the file
// faults instead of passing unseen.
#include <cstdint>
#include <filesystem>
#include <random>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <znutil/system/ZnExeResources.h>
#include <znutil/system/ZnVersionResource.h>

#include "ImageBuilder.h"

using namespace imagetest;

namespace {

// A one-page hole between two pages that cannot be touched. The system
// places a new one-page mapping in the highest hole that fits, which is
// almost always this one; the tests check that it was.
class PageHole {
 public:
  PageHole() : page_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
    region_ = static_cast<unsigned char *>(mmap(nullptr, 3 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    munmap(region_ + page_, page_);
  }
  ~PageHole() {
    munmap(region_, page_);
    munmap(region_ + 2 * page_, page_);
  }
  PageHole(PageHole const &) = delete;
  PageHole &operator=(PageHole const &) = delete;
  void *Hole() const { return region_ + page_; }

 private:
  std::size_t page_;
  unsigned char *region_;
};

struct ViewCheck {
  unsigned char const *begin;
  std::size_t size;
  bool operator()(void const *address, std::size_t bytes) const {
    auto const where = reinterpret_cast<std::uintptr_t>(address), first = reinterpret_cast<std::uintptr_t>(begin);
    return address == nullptr || (where >= first && where - first <= size && bytes <= size - (where - first));
  }
};

// Calls every member on the image at `path`, checking that whatever comes
// back lies inside the file. Returns whether the view stood before a page
// that cannot be read.
bool Exercise(std::string const &path) {
  PageHole const hole;
  ZnExeResources image(path.c_str());
  if (!image.IsOpen()) return true;
  ViewCheck const inView{static_cast<unsigned char *>(image.Address()), std::filesystem::file_size(path)};
  EXPECT_TRUE(inView(image.NTSignatureAddress(), 4));
  EXPECT_TRUE(inView(image.PEFileHeaderAddress(), sizeof(IMAGE_FILE_HEADER)));
  EXPECT_TRUE(inView(image.OptHeaderAddress(), sizeof(IMAGE_OPTIONAL_HEADER32)));
  EXPECT_TRUE(inView(image.SectionHeaderAddress(), sizeof(IMAGE_SECTION_HEADER) * image.NumberOfSections()));
  IMAGE_SECTION_HEADER header;
  image.GetSectionHeaderByName(&header, ".rsrc");
  for (ZnULong index = 0; index < 20; ++index) EXPECT_TRUE(inView(image.GetDirectoryAddress(index), 1));
  void *block = image.FindResourceA(RT_VERSION, 1, 0x409);
  EXPECT_TRUE(inView(block, 1));
  ZnVersionResource version(static_cast<unsigned char *>(block));
  version.GetProductVersion();
  for (char16_t const *name : {u"CompanyName", u"ProductVersion", u"NoSuchKey"}) {
    std::vector<unsigned short> key(name, name + std::char_traits<char16_t>::length(name) + 1);
    ZnULong length;
    unsigned short const *value = version.GetString(key.data(), &length);
    if (value != nullptr) {
      EXPECT_TRUE(inView(value, (std::size_t{length} + 1) * 2));
    }
  }
  version.SetFileVersion("1.2.3.4");
  if (version.GetFileVersion() != NULL_STRING) {
    EXPECT_EQ(version.GetFileVersion(), "1.2.3.4");
  }
  return image.Address() == hole.Hole();
}

TEST(DamagedImageTest, EveryTruncationIsSafe) {
  TempDirectory folder;
  Bytes const sample = ReadBytes(SampleImagePath());
  int guarded = 0;
  for (std::size_t size = 0; size <= sample.size(); ++size) {
    guarded += Exercise(folder.Write("cut.exe", Bytes(sample.begin(), sample.begin() + size)));
    if (HasFailure()) FAIL() << "cut to " << size << " bytes";
  }
  EXPECT_GT(guarded, static_cast<int>(sample.size() / 2));
}

TEST(DamagedImageTest, RandomlyCorruptedImagesAreSafe) {
  TempDirectory folder;
  Bytes const sample = ReadBytes(SampleImagePath());
  std::mt19937 random(20240611);
  int guarded = 0;
  auto const below = [&random](std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
  };
  for (int round = 0; round < 3000; ++round) {
    Bytes bytes = sample;
    for (std::size_t changes = 1 + below(6); changes > 0; --changes) {
      // Half the changes hit the headers and the resource tree, where a
      // wrong value steers the walk.
      std::size_t const at =
          below(2) == 0 ? below(bytes.size()) : (below(2) == 0 ? below(0x200) : 0xA00 + below(0x328));
      bytes[at] = below(2) == 0 ? static_cast<unsigned char>(below(256)) : bytes[at] ^ (1u << below(8));
    }
    if (below(8) == 0) bytes.resize(below(bytes.size()) + 1);
    guarded += Exercise(folder.Write("corrupt.exe", bytes));
    if (HasFailure()) FAIL() << "round " << round;
  }
  EXPECT_GT(guarded, 1500);
}

TEST(DamagedImageTest, HostileHeaderValuesGiveNull) {
  struct Damage {
    char const *what;
    std::size_t offset;
    std::uint32_t value;
    bool signature, sections, resources;
  };
  Damage const damages[] = {
      {"negative e_lfanew", 60, 0x80000000, false, false, false},
      {"e_lfanew beyond the file", 60, 0x7FFFFFFF, false, false, false},
      {"signature at the last bytes", 60, 4096 - 4, true, false, false},
      {"65535 sections", kSignatureOffset + 4, 0xFFFF014C, true, false, false},
      {"directory count of 2", kSignatureOffset + 24 + 92, 2, true, true, false},
      {"resource section of 4 GB", kSectionTableOffset + 40 + 16, 0xFFFFFFFF, true, true, true},
  };
  TempDirectory folder;
  for (Damage const &damage : damages) {
    Image built = BuildImage({{16, 1, 0x409, Serialize(TypicalVersionInfo())}}, ImageOptions{0, ".rsrc", 16, 4096});
    PutDword(built.bytes, damage.offset, damage.value);
    ZnExeResources image(folder.Write("hostile.exe", built.bytes).c_str());
    ASSERT_TRUE(image.IsOpen()) << damage.what;
    EXPECT_EQ(damage.signature, image.NTSignatureAddress() != nullptr) << damage.what;
    EXPECT_EQ(damage.sections, image.SectionHeaderAddress() != nullptr) << damage.what;
    EXPECT_EQ(damage.resources, image.FindResourceA(RT_VERSION, 1, 0x409) != nullptr) << damage.what;
  }
}

TEST(DamagedImageTest, VersionLengthsBeyondTheFileStopAtItsEnd) {
  // The version block ends the file, which ends a page, and its lengths
  // claim far more.
  Bytes block = Serialize(TypicalVersionInfo());
  block.resize((block.size() + 3) / 4 * 4);
  PutWord(block, 0, 0xFFFF);
  std::size_t const stringFileInfo = 92, table = stringFileInfo + 36;
  PutWord(block, stringFileInfo, 0xFFFF);
  PutWord(block, table, 0xFFFF);
  TempDirectory folder;
  Image const built = BuildImage({{16, 1, 0x409, block}}, ImageOptions{0, ".rsrc", 16, 4096});
  ASSERT_EQ(4096u, built.bytes.size());
  std::string const path = folder.Write("long.exe", built.bytes);
  PageHole const hole;
  ZnExeResources image(path.c_str());
  ASSERT_EQ(hole.Hole(), image.Address()) << "the view could not be placed before a guard page";
  ZnVersionResource version(static_cast<unsigned char *>(image.FindResourceA(RT_VERSION, 1, 0x409)));
  EXPECT_EQ(version.GetFileVersion(), "2.13.0.7");
  std::vector<unsigned short> const company = {'C', 'o', 'm', 'p', 'a', 'n', 'y', 'N', 'a', 'm', 'e', 0};
  std::vector<unsigned short> const missing = {'M', 'i', 's', 's', 'i', 'n', 'g', 0};
  ZnULong length;
  EXPECT_NE(nullptr, version.GetString(company.data(), &length));
  EXPECT_EQ(nullptr, version.GetString(missing.data(), &length));
}

}  // namespace
