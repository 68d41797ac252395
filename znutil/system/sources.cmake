set(ZNUTIL_SUBSYSTEM_SOURCES
  ZnExeFileMapping.cpp
  ZnExeResources.cpp
  ZnFileInformation.cpp
  ZnVersionResource.cpp
  internal/VersionBlock.cpp)
