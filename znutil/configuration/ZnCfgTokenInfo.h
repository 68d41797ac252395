// ZnCfgTokenInfo: what the configuration scanner knows of one token.
//
// The value is the token's number (NUMBER, HEXBYTE) or its text (WORD,
// STRING, a ZnString held by the scanner); the line is the input
// line at which the token was matched; the text is the copy of the matched
// characters in the parse's text pool.
#ifndef ZNUTIL_CONFIGURATION_ZNCFGTOKENINFO_H
#define ZNUTIL_CONFIGURATION_ZNCFGTOKENINFO_H

#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/text/ZnString.h>

struct ZnCfgTokenInfo {
  ZNUTIL_FIXED_BLOCK_OPERATORS

  union {
    int iValue;
    ZnString *pfsValue;
  };
  int iLine;
  char const *pszText;
};

#endif  // ZNUTIL_CONFIGURATION_ZNCFGTOKENINFO_H
