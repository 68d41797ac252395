// The heap front: one C run-time heap shared by the library, its host and
// its plug-ins.
//
// Blocks from these functions go back to ZenoUtilFree, never to
// ZnFixedBlockAllocator::Free, and the other way round. The Dbg forms take
// the block kind, file and line of a debugging heap and ignore them. The
// accounting calls are fixed stubs: the library counts nothing, and their
// all-ones result means "unknown".
#ifndef ZNUTIL_MEMORY_ZENOUTILHEAP_H
#define ZNUTIL_MEMORY_ZENOUTILHEAP_H

#include <znutil/platform/Export.h>

/// malloc.
ZNUTIL_API void *ZenoUtilAlloc(unsigned int size);
ZNUTIL_API void *ZenoUtilAllocDbg(unsigned int size, int blockType, char const *file, int line);
/// free.
ZNUTIL_API void ZenoUtilFree(void *block);
ZNUTIL_API void ZenoUtilFreeDbg(void *block, int blockType);
/// calloc.
ZNUTIL_API void *ZenoUtilCalloc(unsigned int count, unsigned int size);
ZNUTIL_API void *ZenoUtilCallocDbg(unsigned int count, unsigned int size, int blockType, char const *file,
                                   int line);
/// realloc.
ZNUTIL_API void *ZenoUtilRealloc(void *block, unsigned int size);
ZNUTIL_API void *ZenoUtilReallocDbg(void *block, unsigned int size, int blockType, char const *file, int line);
/// Resizes in place: the block itself when `size` fits its usable size, else null.
ZNUTIL_API void *ZenoUtilExpand(void *block, unsigned int size);
ZNUTIL_API void *ZenoUtilExpandDbg(void *block, unsigned int size, int blockType, char const *file, int line);
/// The usable size of the block.
ZNUTIL_API unsigned int ZenoUtilMSize(void *block);
ZNUTIL_API unsigned int ZenoUtilMSizeDbg(void *block, int blockType);
/// Always 0xFFFFFFFF: nothing is counted.
ZNUTIL_API unsigned long ZenoUtilTotalMemInUse();
/// Always 0xFFFFFFFF: no checkpoint is taken.
ZNUTIL_API unsigned long ZenoUtilCheckpointMemInUse();

#endif  // ZNUTIL_MEMORY_ZENOUTILHEAP_H
