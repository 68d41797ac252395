set(ZNUTIL_SUBSYSTEM_SOURCES
  ZnEvent.cpp
  ZnLock.cpp
  ZnMultipleEvents.cpp
  ZnSleeper.cpp)
