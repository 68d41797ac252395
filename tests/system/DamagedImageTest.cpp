// Truncated, corrupted and hostile images: every member gives false or null or a value read from inside the
// file, and nothing reads outside it.
//
// The images here are one page long, and each is mapped where a page that cannot be read follows it, so that
// a read behind the end of the file faults instead of passing unseen.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <random>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <znutil/system/ZnExeResources.h>
#include <znutil/system/ZnVersionResource.h>

#include "ImageBuilder.h"
#include "ScratchDirectory.h"

using namespace imagetest;
using znutil_test::ScratchDirectory;

namespace {

int const kPrivate = MAP_PRIVATE | MAP_ANONYMOUS;

// A one-page hole between two pages that cannot be touched. The system places a new one-page mapping in the
// highest hole that fits; holes higher than this one (left by a sanitizer's mappings, say) are first filled
// with pages of no access, so that it is this one. The tests check that it was.
struct PageHole {
  std::size_t const page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  unsigned char *region = static_cast<unsigned char *>(mmap(nullptr, 3 * page, PROT_NONE, kPrivate, -1, 0));
  std::vector<void *> taken{region, region + 2 * page};  // unmapped at the end
  PageHole() {
    munmap(Hole(), page);
    for (int plug = 0; plug < 64; ++plug) {
      void *next = mmap(nullptr, page, PROT_NONE, kPrivate, -1, 0);
      if (next == MAP_FAILED) break;
      if (next == Hole()) {
        munmap(next, page);
        break;
      }
      taken.push_back(next);
    }
  }
  ~PageHole() { for (void *pages : taken) munmap(pages, page); }
  void *Hole() const { return region + page; }
};

// An image opened, if it could be, with its view right before a page that cannot be read. Another mapping
// made in between (a sanitizer's, say) can take the hole, so the opening is tried a few times.
struct GuardedImage {
  std::unique_ptr<PageHole> hole;
  std::unique_ptr<ZnExeResources> image;  // closed before its hole goes

  explicit GuardedImage(std::string const &path) {
    for (int attempt = 0; attempt < 8 && !(image && (!image->IsOpen() || Guarded())); ++attempt) {
      image.reset();
      hole = std::make_unique<PageHole>();
      image = std::make_unique<ZnExeResources>(path.c_str());
    }
  }
  bool Guarded() const { return image->Address() == hole->Hole(); }
};

// Calls every member on the image at `path`, checking that whatever comes back lies inside the file. Returns
// whether the view stood before a page that cannot be read.
bool Exercise(std::string const &path) {
  GuardedImage const guarded(path);
  ZnExeResources &image = *guarded.image;
  if (!image.IsOpen()) return true;
  auto const first = reinterpret_cast<std::uintptr_t>(image.Address());
  std::size_t const size = std::filesystem::file_size(path);
  auto const inView = [first, size](void const *address, std::size_t bytes) {
    auto const where = reinterpret_cast<std::uintptr_t>(address);
    return address == nullptr || (where >= first && where - first <= size && bytes <= size - (where - first));
  };
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
    ZnULong length;
    unsigned short const *value = version.GetString(Key(name).data(), &length);
    EXPECT_TRUE(value == nullptr || inView(value, (std::size_t{length} + 1) * 2));
  }
  version.SetFileVersion("1.2.3.4");
  ZnString const stamped = version.GetFileVersion();
  EXPECT_TRUE(stamped == NULL_STRING || stamped == "1.2.3.4") << stamped.Chars();
  return guarded.Guarded();
}

TEST(DamagedImageTest, EveryTruncationAndRandomCorruptionIsSafe) {
  ScratchDirectory folder;
  Bytes const sample = ReadBytes(SampleImagePath());
  int guarded = 0;
  for (std::size_t size = 0; size <= sample.size(); ++size) {
    guarded += Exercise(WriteBytes(folder / "cut.exe", Bytes(sample.begin(), sample.begin() + size)));
    if (HasFailure()) FAIL() << "cut to " << size << " bytes";
  }
  EXPECT_GT(guarded, static_cast<int>(sample.size() / 2));
  std::mt19937 random(20240611);
  guarded = 0;
  auto const below = [&random](std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
  };
  for (int round = 0; round < 3000; ++round) {
    Bytes bytes = sample;
    for (std::size_t changes = 1 + below(6); changes > 0; --changes) {
      // Half the changes hit the headers and the resource tree, where a wrong value steers the walk.
      std::size_t const at =
          below(2) == 0 ? below(bytes.size()) : (below(2) == 0 ? below(0x200) : kResourceRaw + below(0x328));
      bytes[at] = below(2) == 0 ? static_cast<unsigned char>(below(256)) : bytes[at] ^ (1u << below(8));
    }
    if (below(8) == 0) bytes.resize(below(bytes.size()) + 1);
    guarded += Exercise(WriteBytes(folder / "corrupt.exe", bytes));
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
      {"directory count of 2", kOptionalHeader + 92, 2, true, true, false},
      {"resource section of 4 GB", kResourceSectionHeader + 16, 0xFFFFFFFF, true, true, true},
  };
  ScratchDirectory folder;
  for (Damage const &damage : damages) {
    Bytes bytes = ReadBytes(SampleImagePath());
    PutDword(bytes, damage.offset, damage.value);
    ZnExeResources image(WriteBytes(folder / "hostile.exe", bytes).c_str());
    ASSERT_TRUE(image.IsOpen()) << damage.what;
    EXPECT_EQ(damage.signature, image.NTSignatureAddress() != nullptr) << damage.what;
    EXPECT_EQ(damage.sections, image.SectionHeaderAddress() != nullptr) << damage.what;
    EXPECT_EQ(damage.resources, image.FindResourceA(RT_VERSION, 1, 0x409) != nullptr) << damage.what;
  }
}

TEST(DamagedImageTest, VersionLengthsBeyondTheFileStopAtItsEnd) {
  // The version block ends the file, which ends a page, and its lengths claim far more.
  Bytes block = Serialize(TypicalVersionInfo());
  PadTo4(block);
  for (std::size_t at : {0, 92, 92 + 36}) PutWord(block, at, 0xFFFF);  // the block, StringFileInfo, the table
  ScratchDirectory folder;
  Image const built = BuildImage({{16, 1, 0x409, block}}, 0, true);
  ASSERT_EQ(4096u, built.bytes.size());
  GuardedImage const guarded(WriteBytes(folder / "long.exe", built.bytes));
  ASSERT_TRUE(guarded.Guarded()) << "the view could not be placed before a guard page";
  ZnExeResources &image = *guarded.image;
  ZnVersionResource version(static_cast<unsigned char *>(image.FindResourceA(RT_VERSION, 1, 0x409)));
  EXPECT_EQ(version.GetFileVersion(), "2.13.0.7");
  ZnULong length;
  EXPECT_NE(nullptr, version.GetString(Key(u"CompanyName").data(), &length));
  EXPECT_EQ(nullptr, version.GetString(Key(u"Missing").data(), &length));
}

}  // namespace
