// ZnHashTable: the sieve table of primes from which bucket counts come.
#include <znutil/containers/ZnHashTable.h>

#include <cmath>
#include <cstring>
#include <new>

namespace {

constexpr int kPrimeTableSize = 10000;

}  // namespace

unsigned char *ZnHashTable::primeTable = nullptr;
unsigned char *ZnHashTable::primeTableBoundary = nullptr;

// A zero byte marks a prime (and 0 and 1, which the sieve leaves alone).
// The table lives as long as the process. Building it once is guarded, so
// that the first use may come from any thread.
void ZnHashTable::InitializePrimeTable() {
  static bool const built = [] {
    auto *table = static_cast<unsigned char *>(::operator new(kPrimeTableSize));
    std::memset(table, 0, kPrimeTableSize);
    int const limit = static_cast<int>(std::sqrt(static_cast<double>(kPrimeTableSize)));
    for (int i = 2; i <= limit; ++i) {
      if (table[i] != 0) continue;
      for (int j = 2 * i; j < kPrimeTableSize; j += i) table[j] = 1;
    }
    primeTable = table;
    primeTableBoundary = table + kPrimeTableSize;
    return true;
  }();
  static_cast<void>(built);
}

int ZnHashTable::SearchForClosestPrime(int n) {
  if (n > kPrimeTableSize - 1) return n;
  if (n < 1) return 1;
  InitializePrimeTable();
  for (unsigned char const *entry = primeTable + n; entry < primeTableBoundary; ++entry) {
    if (*entry == 0) return static_cast<int>(entry - primeTable);
  }
  return kPrimeTableSize;
}
