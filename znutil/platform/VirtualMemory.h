// Address space and page services: reserve a range, commit and decommit
// pages inside it, release it.
//
// A reserved range takes no memory and cannot be touched; committed pages
// are readable and writable; a guard page is committed but inaccessible.
#ifndef ZNUTIL_PLATFORM_VIRTUALMEMORY_H
#define ZNUTIL_PLATFORM_VIRTUALMEMORY_H

#include <cstddef>

namespace znutil {
namespace platform {

/// The size of a page of this machine.
std::size_t PageSize();

/// Reserves at least `bytes` of address space; stores the size actually
/// reserved (whole pages) in `reserved`. Null on failure.
void *ReserveAddressSpace(std::size_t bytes, std::size_t *reserved);

/// Makes [address, address + bytes) readable and writable.
bool CommitPages(void *address, std::size_t bytes);

/// Makes [address, address + bytes) committed but inaccessible.
bool CommitGuardPages(void *address, std::size_t bytes);

/// Gives the pages back to the system and makes them inaccessible again.
bool DecommitPages(void *address, std::size_t bytes);

/// Releases a range from ReserveAddressSpace.
void ReleaseAddressSpace(void *base, std::size_t reserved);

// Under AddressSanitizer, Poison makes the program's reads and writes of
// [address, address + bytes) errors that it reports, and Unpoison allows
// them again; otherwise both do nothing. Allocators mark their own
// bookkeeping with them.
#if defined(__SANITIZE_ADDRESS__)
#define ZNUTIL_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZNUTIL_ADDRESS_SANITIZER 1
#endif
#endif
#ifdef ZNUTIL_ADDRESS_SANITIZER
void Poison(void const *address, std::size_t bytes);
void Unpoison(void const *address, std::size_t bytes);
#else
inline void Poison(void const *, std::size_t) {}
inline void Unpoison(void const *, std::size_t) {}
#endif

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_VIRTUALMEMORY_H
