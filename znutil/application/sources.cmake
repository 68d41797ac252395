set(ZNUTIL_SUBSYSTEM_SOURCES
  UtilityAppIdentity.cpp)
