// The token numbers of the configuration scanner and grammar.
#ifndef ZNUTIL_CONFIGURATION_INTERNAL_CFGTOKENS_H
#define ZNUTIL_CONFIGURATION_INTERNAL_CFGTOKENS_H

namespace znutil {
namespace detail {

enum CfgToken {
  kCfgEnd = 0,
  kCfgWord = 257,
  kCfgNumber = 258,
  kCfgHexByte = 259,
  kCfgString = 260,
  kCfgBinary = 261,
  kCfgFloat = 262,
  kCfgInteger = 263,
  kCfgSection = 264,
  kCfgText = 265,
  kCfgAscii = 266,
  kCfgHex = 267,
  kCfgLParen = 268,
  kCfgRParen = 269,
  kCfgEquals = 270,
  kCfgComma = 271,
};

/// The scanner's start conditions.
enum CfgCondition { kCfgNormal, kCfgInString, kCfgInEscape };

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_CONFIGURATION_INTERNAL_CFGTOKENS_H
