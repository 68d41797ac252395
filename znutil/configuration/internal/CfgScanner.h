// The scanner of the configuration file form: tokens out of the text of one
// parse, with the three start conditions normal, string and escape.
#ifndef ZNUTIL_CONFIGURATION_INTERNAL_CFGSCANNER_H
#define ZNUTIL_CONFIGURATION_INTERNAL_CFGSCANNER_H

#include <string>

#include <znutil/configuration/ZnCfgTokenInfo.h>
#include <znutil/configuration/internal/CfgTokens.h>

class ZnCfgFileParser;

namespace znutil {
namespace detail {

class CfgScanner {
 public:
  /// Scans `size` bytes at `text`, starting in `condition`.
  CfgScanner(char const *text, std::size_t size, CfgCondition condition, ZnCfgFileParser &parser);
  CfgScanner(CfgScanner const &) = delete;
  CfgScanner &operator=(CfgScanner const &) = delete;

  /// The next token, kCfgEnd at the end of the input; fills `info`.
  int Next(ZnCfgTokenInfo *info);
  /// The start condition the scanner stands in.
  CfgCondition Condition() const { return eCondition; }

 private:
  /// Reports the match of `length` bytes at the cursor, the text of a
  /// token or of a report, to the parser and moves past it.
  void Match(std::size_t length, ZnCfgTokenInfo *info);
  /// Moves past a match that gives no token: nothing reads its text.
  void Skip(std::size_t length);
  /// The length of the run of bytes at the cursor that `accept` takes.
  template <typename Accept>
  std::size_t Run(std::size_t from, Accept accept) const;
  int ScanNormal(ZnCfgTokenInfo *info);
  /// Scans in the string and escape conditions; true when a string ended.
  bool ScanString(ZnCfgTokenInfo *info);
  void ScanEscape(ZnCfgTokenInfo *info);
  int ScanWord(ZnCfgTokenInfo *info);
  int ScanNumber(std::size_t length, ZnCfgTokenInfo *info);
  void SkipComment();
  /// The collected string as a token value.
  ZnString *TakeString();
  /// A slot for the value of a WORD or STRING token. A value stays valid
  /// while the next kTokenStrings - 1 such tokens are scanned: the grammar
  /// copies each one before it reads that far.
  ZnString *NextTokenString();

  /// The string of `length` bytes (no zero among them) at `text`: the one
  /// made for the same text not long ago, when there is one, so that names
  /// and machines that recur share their text.
  ZnString const &Recent(char const *text, std::size_t length);

  static constexpr int kTokenStrings = 4;
  static constexpr std::size_t kRecentStrings = 256;

  char const *pcCursor;
  char const *pcEnd;
  CfgCondition eCondition;
  ZnCfgFileParser &rParser;
  std::string sCollected;
  ZnString afsTokenStrings[kTokenStrings];
  int iNextTokenString;
  ZnString afsRecent[kRecentStrings];
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_CONFIGURATION_INTERNAL_CFGSCANNER_H
