// The grammar of the configuration file form, by recursive descent over the
// scanner's tokens, with the actions that build the tree.
//
// The grammar is left-recursive in its lists, so an LR parser's stack never
// holds more than 16 entries for it: the 500-entry limit of the original
// stacks can never be reached, and no input is refused for depth. Lists are
// read by loops here, so no input nests the recursion either.
//
// A token is read only when a decision needs it, and a construct is built
// as soon as its last token is known, as an LALR parser's default
// reductions do: so messages come out in the same order, and a syntax error
// after a complete entry or section still sees that entry's or section's
// messages first. The result is set only when the end of the input is
// accepted.
#ifndef ZNUTIL_CONFIGURATION_INTERNAL_CFGGRAMMAR_H
#define ZNUTIL_CONFIGURATION_INTERNAL_CFGGRAMMAR_H

#include <znutil/configuration/ZnCfgTokenInfo.h>
#include <znutil/text/ZnString.h>
#include <znutil/values/ZnBinary.h>

class ZnCfgEntry;
class ZnCfgEntryList;
class ZnCfgFileParser;
class ZnCfgSection;
class ZnCfgSectionList;

namespace znutil {
namespace detail {

class CfgScanner;

class CfgGrammar {
 public:
  CfgGrammar(CfgScanner &scanner, ZnCfgFileParser &parser);
  CfgGrammar(CfgGrammar const &) = delete;
  CfgGrammar &operator=(CfgGrammar const &) = delete;

  /// Reads the whole input; false after a syntax error. On success the
  /// parser has the result through SetInput.
  bool Run();

 private:
  /// The token ahead, read if need be.
  int Peek();
  /// Takes the token ahead if it is `token`, into `info` when given;
  /// otherwise reports a syntax error. False on error.
  bool Expect(int token, ZnCfgTokenInfo *info = nullptr);
  ZnCfgSection *Section();
  ZnCfgEntryList *Entries();
  ZnCfgEntry *Entry();
  /// The machine of an entry: a word in parentheses, or "all".
  bool Machine(ZnString *machine);
  ZnCfgEntry *TypedEntry(ZnString const &name, ZnString const &machine, int nameLine);
  ZnCfgEntry *IntegerEntry(ZnString const &name, ZnString const &machine, int nameLine);
  /// A byte list, gathered in a tracked stream, as a value.
  bool ByteList(ZnBinary *bytes);
  /// True for 4 bytes; otherwise reports the count for the `type` entry
  /// whose name stands on `nameLine`.
  bool CheckFourBytes(ZnBinary const &bytes, char const *type, int nameLine);
  /// Reports `what` then `name` then "is already defined".
  void ReportDuplicate(char const *what, ZnString const &name);

  CfgScanner &rScanner;
  ZnCfgFileParser &rParser;
  ZnCfgTokenInfo tiAhead;
  int iAhead;
  bool bHaveAhead;
  /// The machine of entries that name none.
  ZnString fsAll;
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_CONFIGURATION_INTERNAL_CFGGRAMMAR_H
