#include <znutil/text/ZnPointerStorageString.h>

#include <cstring>

#include <znutil/memory/ZnFixedBlockAllocator.h>
#include <znutil/platform/WideText.h>

ZnPointerStorageString::ZnPointerStorageString() : pwWideCopy(nullptr), pcNarrowCopy(nullptr) {}

ZnPointerStorageString::ZnPointerStorageString(ZnStringRef const &other)
    : ZnStringRef(other), pwWideCopy(nullptr), pcNarrowCopy(nullptr) {}

ZnPointerStorageString::~ZnPointerStorageString() {
  ZnFixedBlockAllocator::Free(pwWideCopy);
  ZnFixedBlockAllocator::Free(pcNarrowCopy);
}

char *ZnPointerStorageString::RefreshNarrow() {
  ZnFixedBlockAllocator::Free(pcNarrowCopy);
  std::size_t const length = static_cast<std::size_t>(GetLength());
  pcNarrowCopy = static_cast<char *>(ZnFixedBlockAllocator::Alloc(length + 1));
  std::memcpy(pcNarrowCopy, GetInternal(), length + 1);
  return pcNarrowCopy;
}

unsigned short *ZnPointerStorageString::RefreshWide() {
  ZnFixedBlockAllocator::Free(pwWideCopy);
  std::size_t const length = static_cast<std::size_t>(GetLength());
  pwWideCopy = static_cast<unsigned short *>(ZnFixedBlockAllocator::Alloc(length * 2 + 2));
  znutil::platform::NarrowToWide(pwWideCopy, GetInternal(), length);
  pwWideCopy[length] = 0;
  return pwWideCopy;
}
