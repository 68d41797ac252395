#include <znutil/memory/ZenoUtilHeap.h>

#include <cstdlib>

#include <znutil/platform/Heap.h>

void *ZenoUtilAlloc(unsigned int size) { return std::malloc(size); }

void *ZenoUtilAllocDbg(unsigned int size, int, char const *, int) { return ZenoUtilAlloc(size); }

void ZenoUtilFree(void *block) { std::free(block); }

void ZenoUtilFreeDbg(void *block, int) { ZenoUtilFree(block); }

void *ZenoUtilCalloc(unsigned int count, unsigned int size) { return std::calloc(count, size); }

void *ZenoUtilCallocDbg(unsigned int count, unsigned int size, int, char const *, int) {
  return ZenoUtilCalloc(count, size);
}

void *ZenoUtilRealloc(void *block, unsigned int size) { return std::realloc(block, size); }

void *ZenoUtilReallocDbg(void *block, unsigned int size, int, char const *, int) {
  return ZenoUtilRealloc(block, size);
}

void *ZenoUtilExpand(void *block, unsigned int size) {
  return block != nullptr && size <= znutil::platform::UsableSize(block) ? block : nullptr;
}

void *ZenoUtilExpandDbg(void *block, unsigned int size, int, char const *, int) {
  return ZenoUtilExpand(block, size);
}

unsigned int ZenoUtilMSize(void *block) { return static_cast<unsigned int>(znutil::platform::UsableSize(block)); }

unsigned int ZenoUtilMSizeDbg(void *block, int) { return ZenoUtilMSize(block); }

unsigned long ZenoUtilTotalMemInUse() { return 0xFFFFFFFFul; }

unsigned long ZenoUtilCheckpointMemInUse() { return 0xFFFFFFFFul; }
