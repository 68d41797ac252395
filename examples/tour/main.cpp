// A tour of the znutil library: each section shows one subsystem at work
// and prints what it did.
#include <cstdio>
#include <sstream>

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

void TourClocks() {
  std::printf("== Clocks\n");
  ZnStopWatch watch;
  watch.Start(20);
  ZnSleeper::Snooze(ZnTime(0, 25));
  std::printf("a stopwatch with a 20 ms period, after a 25 ms snooze: %lu ms elapsed, %s\n",
              static_cast<unsigned long>(watch.MeasureElapsed()), watch.HasExpired() ? "expired" : "not expired");
  std::printf("tick 5 minus tick 0xFFFFFFFF across the wrap: %lu (one short of the true 6, by design)\n",
              static_cast<unsigned long>(ZnSubtractTickCounts(5, 0xFFFFFFFF)));
  std::ostringstream spans;
  spans << ZnTime(1, 900) + ZnTime(0, 200) << ", and 1.000 - 2.000 = " << ZnTime(1, 0) - ZnTime(2, 0);
  std::printf("1.900 + 0.200 = %s\n", spans.str().c_str());
}

void TourCollections() {
  std::printf("== String collections and dictionaries\n");
  ZnStringList words;
  ZnString("pear,apple,Fig,banana").Tokenize(ZnString(","), words);
  words.Sort(false);
  ZnString joined;
  ZnListContext position;
  for (ZnString *word = words.First(position); word != nullptr; word = words.Next(position))
    joined << (joined == NULL_STRING ? "" : " ") << *word;
  std::printf("tokenized and sorted ignoring case: %s\n", static_cast<char const *>(joined));

  ZnDictionary sizes;
  sizes.HashCaseInsensitive();
  int width = 640, height = 480;
  sizes.Add(ZnString("Width"), &width);
  sizes.Add(ZnString("Height"), &height);
  std::printf("a case-insensitive dictionary finds WIDTH = %d\n", *static_cast<int *>(sizes.Find(ZnString("WIDTH"))));
  ZnUuid id;
  std::printf("a new identifier: %s\n", static_cast<char const *>(static_cast<ZnString>(id)));
  ZnString grouped;
  grouped.FormatInt(1234567, 12);
  std::printf("FormatInt(1234567, 12): \"%s\"\n", static_cast<char const *>(grouped));
}

}  // namespace

int main() {
  TourMemory();
  TourLocks();
  TourStrings();
  TourCollections();
  TourClocks();
  return 0;
}
