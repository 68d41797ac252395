// A tour of the znutil library: each section shows one subsystem at work
// and prints what it did.
#include <cstdio>
#include <filesystem>
#include <string>

#include <znutil/znutil.h>

namespace {

void TourMemory() {
  std::printf("== Memory\n");
  void *small = ZnFixedBlockAllocator::Alloc(24);
  void *large = ZnFixedBlockAllocator::Alloc(4096);
  std::printf("allocated a 24-byte block at %p and a 4096-byte block at %p\n", small, large);
  ZnFixedBlockAllocator::Free(small);
  void *again = ZnFixedBlockAllocator::Alloc(24);
  std::printf("freed the small block; the next 24-byte request %s it\n", again == small ? "reuses" : "does not reuse");
  ZnFixedBlockAllocator::Free(again);
  ZnFixedBlockAllocator::Free(large);
}

void TourLocks() {
  std::printf("== Locks\n");
  ZnLock lock;
  bool const first = lock.Lock(0);
  bool const second = lock.Lock(25);
  std::printf("first Lock(0): %s; second Lock(25) on the held lock: %s\n", first ? "taken" : "refused",
              second ? "taken" : "refused");
  lock.Unlock();
  ZnAtomicWord word;
  word.Increment();
  std::printf("an atomic word incremented once holds %ld\n", word.Get());
}

void TourStrings() {
  std::printf("== Strings\n");
  ZnString name("report");
  ZnString copy = name;
  copy << ".txt";
  std::printf("\"%s\" copied and appended to: \"%s\" (the original is unchanged)\n", static_cast<char const *>(name),
              static_cast<char const *>(copy));
  ZnString greeting("world");
  greeting >> "hello, ";
  std::printf("prepending with >>: \"%s\"; as upper case: \"%s\"\n", static_cast<char const *>(greeting),
              static_cast<char const *>(greeting.ToUpper()));
  std::printf("\"lo\" found at %d; empty text equals NULL_STRING: %s\n", greeting.ContainsSubString(ZnString("lo")),
              ZnString("") == NULL_STRING ? "yes" : "no");
}

void PrintVersion(char const *path) {
  ZnExeResources image(path);
  ZnVersionResource version(static_cast<unsigned char *>(image.FindResourceA(RT_VERSION, 1, 0x409)));
  unsigned short const key[] = {'C', 'o', 'm', 'p', 'a', 'n', 'y', 'N', 'a', 'm', 'e', 0};
  ZnULong length;
  unsigned short const *company = version.GetString(key, &length);
  std::printf("file version %s, product version %s, company \"%s\"\n",
              static_cast<char const *>(version.GetFileVersion()),
              static_cast<char const *>(version.GetProductVersion()), static_cast<char const *>(ZnString(company)));
}

// Reads and stamps a copy of the sample Windows executable that the build
// puts next to the tour.
void TourImages(char const *tour) {
  std::printf("== Executable images\n");
  std::filesystem::path const sample = std::filesystem::path(tour).parent_path() / "sample.exe";
  if (!std::filesystem::exists(sample)) {
    std::printf("no sample.exe next to the tour; skipped\n");
    return;
  }
  std::string const copy = (std::filesystem::temp_directory_path() / "znutil-tour-sample.exe").string();
  std::filesystem::copy_file(sample, copy, std::filesystem::copy_options::overwrite_existing);
  ZnFileInformation info(copy.c_str());
  std::printf("a copy of the sample image, %u bytes: ", info.Size());
  PrintVersion(copy.c_str());
  {
    ZnExeResources image(copy.c_str());
    ZnVersionResource(static_cast<unsigned char *>(image.FindResourceA(RT_VERSION, 1, 0x409)))
        .SetFileVersion("2.14.0.1");
  }
  std::printf("stamped with SetFileVersion(\"2.14.0.1\") and read again: ");
  PrintVersion(copy.c_str());
  std::filesystem::remove(copy);
}

}  // namespace

int main(int, char **argv) {
  TourMemory();
  TourLocks();
  TourStrings();
  TourImages(argv[0]);
  return 0;
}
