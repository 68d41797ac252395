// Address space services over mmap, mprotect and madvise.
#include <znutil/platform/VirtualMemory.h>

#include <sys/mman.h>
#include <unistd.h>

// GCC says __SANITIZE_ADDRESS__; clang before 15 only answers __has_feature.
#if defined(__SANITIZE_ADDRESS__)
#define ZNUTIL_LEAK_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZNUTIL_LEAK_SANITIZER 1
#endif
#endif
#ifdef ZNUTIL_LEAK_SANITIZER
#include <sanitizer/asan_interface.h>
#include <sanitizer/lsan_interface.h>
#endif

namespace znutil {
namespace platform {

std::size_t PageSize() {
  static std::size_t const size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  return size;
}

void *ReserveAddressSpace(std::size_t bytes, std::size_t *reserved) {
  std::size_t const page = PageSize();
  std::size_t const rounded = (bytes + page - 1) / page * page;
  void *base = mmap(nullptr, rounded, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (base == MAP_FAILED) {
    *reserved = 0;
    return nullptr;
  }
  *reserved = rounded;
#ifdef ZNUTIL_LEAK_SANITIZER
  // Library objects keep pointers to heap objects in these pages; the leak
  // checker must scan them (it skips the pages that are not readable).
  __lsan_register_root_region(base, rounded);
#endif
  return base;
}

bool CommitPages(void *address, std::size_t bytes) {
  return mprotect(address, bytes, PROT_READ | PROT_WRITE) == 0;
}

bool CommitGuardPages(void *address, std::size_t bytes) {
  return mprotect(address, bytes, PROT_NONE) == 0;
}

bool DecommitPages(void *address, std::size_t bytes) {
  return madvise(address, bytes, MADV_DONTNEED) == 0 && mprotect(address, bytes, PROT_NONE) == 0;
}

#ifdef ZNUTIL_ADDRESS_SANITIZER
void Poison(void const *address, std::size_t bytes) { __asan_poison_memory_region(address, bytes); }

void Unpoison(void const *address, std::size_t bytes) { __asan_unpoison_memory_region(address, bytes); }
#endif

void ReleaseAddressSpace(void *base, std::size_t reserved) {
#ifdef ZNUTIL_LEAK_SANITIZER
  __lsan_unregister_root_region(base, reserved);
#endif
  munmap(base, reserved);
}

}  // namespace platform
}  // namespace znutil
