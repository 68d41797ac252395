set(ZNUTIL_SUBSYSTEM_SOURCES
  UtilityAppIdentity.cpp
  UtilityAppPaths.cpp
  ZnPathSearch.cpp)
