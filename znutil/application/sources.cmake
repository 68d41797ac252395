set(ZNUTIL_SUBSYSTEM_SOURCES
  UtilityAppIdentity.cpp
  UtilityAppOle.cpp
  ZnEnvVariable.cpp
  ZnRegVariable.cpp)
