set(ZNUTIL_SUBSYSTEM_SOURCES
  ZenoUtilHeap.cpp
  ZnFixedBlockAllocator.cpp
  ZnMemBlock.cpp)
