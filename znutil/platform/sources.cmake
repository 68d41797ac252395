set(ZNUTIL_SUBSYSTEM_SOURCES
  linux/Heap.cpp
  linux/RecursiveMutex.cpp
  linux/Scheduling.cpp
  linux/VirtualMemory.cpp)
