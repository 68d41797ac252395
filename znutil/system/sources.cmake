set(ZNUTIL_SUBSYSTEM_SOURCES
  ZnFileTime.cpp
  ZnHPTimer.cpp
  ZnStopWatch.cpp
  ZnSystemTime.cpp
  ZnTickCount.cpp
  ZnTime.cpp)
