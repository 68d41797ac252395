set(ZNUTIL_SUBSYSTEM_SOURCES
  UtilityAppIdentity.cpp
  UtilityAppOle.cpp
  UtilityAppPaths.cpp
  ZnEnvVariable.cpp
  ZnPathSearch.cpp
  ZnRegVariable.cpp)
