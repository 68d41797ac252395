// A tour of the znutil library: each section shows one subsystem at work
// and prints what it did.
#include <cstdio>

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
  std::printf("\"%s\" copied and appended to: \"%s\" (the original is unchanged)\n",
              static_cast<char const *>(name), static_cast<char const *>(copy));
  ZnString greeting("world");
  greeting >> "hello, ";
  std::printf("prepending with >>: \"%s\"; as upper case: \"%s\"\n", static_cast<char const *>(greeting),
              static_cast<char const *>(greeting.ToUpper()));
  std::printf("\"lo\" found at %d; empty text equals NULL_STRING: %s\n", greeting.ContainsSubString(ZnString("lo")),
              ZnString("") == NULL_STRING ? "yes" : "no");
}

}  // namespace

int main() {
  TourMemory();
  TourLocks();
  TourStrings();
  return 0;
}
