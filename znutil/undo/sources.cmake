set(ZNUTIL_SUBSYSTEM_SOURCES
  ZnAction.cpp
  ZnActionManager.cpp)
