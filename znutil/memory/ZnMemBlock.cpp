#include <znutil/memory/ZnMemBlock.h>

#include <cstddef>

#include <znutil/platform/VirtualMemory.h>

namespace platform = znutil::platform;

std::atomic<unsigned long> ZnMemBlock::dwPageSize{0};

ZnMemBlock::ZnMemBlock(unsigned int reserveBytes, ZnMemBlockType type, unsigned int commitBytes, void **ppAddress,
                       unsigned int *pCommitted, unsigned int *pReserved)
    : pBase(nullptr), udwTotalReserved(0), udwTotalCommitted(0), pTop(nullptr), eType(type) {
  GetPageSize();
  std::size_t reserved = 0;
  pBase = platform::ReserveAddressSpace(reserveBytes, &reserved);
  udwTotalReserved = static_cast<unsigned int>(reserved);
  if (ppAddress != nullptr) *ppAddress = pBase;
  if (pCommitted != nullptr) *pCommitted = 0;
  if (pReserved != nullptr) *pReserved = udwTotalReserved;
  // The initial commit needs somewhere to report its address.
  if (commitBytes > 0 && ppAddress != nullptr) *ppAddress = Alloc(commitBytes, pCommitted);
}

ZnMemBlock::~ZnMemBlock() {
  if (pBase != nullptr) platform::ReleaseAddressSpace(pBase, udwTotalReserved);
}

unsigned long ZnMemBlock::GetPageSize() {
  unsigned long size = dwPageSize.load(std::memory_order_relaxed);
  if (size == 0) {
    size = static_cast<unsigned long>(platform::PageSize());
    dwPageSize.store(size, std::memory_order_relaxed);
  }
  return size;
}

unsigned int ZnMemBlock::RoundUpToPages(unsigned int size) const {
  unsigned int const page = static_cast<unsigned int>(GetPageSize());
  return (size + page - 1) / page * page;
}

void *ZnMemBlock::Alloc(unsigned int size, unsigned int *pGot) {
  size = RoundUpToPages(size);
  if (eType == ZnMemBlockGrowDown) size += static_cast<unsigned int>(GetPageSize());
  if (pBase == nullptr || udwTotalReserved - udwTotalCommitted < size) {
    if (pGot != nullptr) *pGot = udwTotalReserved - udwTotalCommitted;
    return nullptr;
  }
  void *address = eType == ZnMemBlockGrowUp ? CommitUp(size) : CommitDown(size);
  if (address == nullptr) {
    if (pGot != nullptr) *pGot = 0;
    return nullptr;
  }
  udwTotalCommitted += size;
  pTop = eType == ZnMemBlockGrowDown ? address : pBase;
  if (pGot != nullptr) *pGot = size;
  return address;
}

void *ZnMemBlock::CommitUp(unsigned int size) {
  char *address = static_cast<char *>(pBase) + udwTotalCommitted;
  return platform::CommitPages(address, size) ? address : nullptr;
}

void *ZnMemBlock::CommitDown(unsigned int size) {
  std::size_t const page = GetPageSize();
  char *top = static_cast<char *>(pTop);
  // The old guard page becomes ordinary memory before the block grows below it.
  if (top != nullptr && !platform::CommitPages(top, page)) return nullptr;
  char *address = (top != nullptr ? top : static_cast<char *>(pBase) + udwTotalReserved) - size;
  if (!platform::CommitPages(address, size) || !platform::CommitGuardPages(address, page)) return nullptr;
  return address;
}

void *ZnMemBlock::Dealloc(unsigned int size, unsigned int *pGot) {
  unsigned int const page = static_cast<unsigned int>(GetPageSize());
  size = size / page * page;
  if (size > udwTotalCommitted) size = udwTotalCommitted;
  if (size == 0) {
    if (pGot != nullptr) *pGot = 0;
    return pTop;
  }
  char *start = eType == ZnMemBlockGrowDown ? static_cast<char *>(pTop)
                                            : static_cast<char *>(pTop) - size + udwTotalCommitted;
  if (!platform::DecommitPages(start, size)) {
    if (pGot != nullptr) *pGot = 0;
    return pTop;
  }
  udwTotalCommitted -= size;
  if (eType == ZnMemBlockGrowDown) pTop = static_cast<char *>(pTop) + size;
  if (pGot != nullptr) *pGot = size;
  return pTop;
}

void ZnMemBlock::ResetGuardPage() {
  if (pTop != nullptr) platform::CommitGuardPages(pTop, GetPageSize());
}
