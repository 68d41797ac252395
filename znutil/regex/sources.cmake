set(ZNUTIL_SUBSYSTEM_SOURCES
  RegexprSyntax.cpp
  RegexprCompile.cpp
  RegexprFirstMap.cpp
  RegexprStarJump.cpp
  RegexprMatch.cpp
  RegexprSearch.cpp
  ZnRegularExpression.cpp)
