// ZnRegularExpression: a pattern compiled once under the library's syntax
// (option value 499: bare ( ) and |, + and ? bare, escape sequences, literal
// letters compared without regard to case, no word operators), searched in
// texts.
//
//   ZnRegularExpression re("(\\w*)\\.txt$");
//   if (!re.Valid()) report(re.CompileErrorString());
//   re.Optimize();                     // skip start positions by first byte
//   if (re.Matches("notes.TXT")) use(re.RegisterStart(1), re.RegisterEnd(1));
//
// Copies are shallow: they share the compiled program (which the first match
// of each loop rewrites in place) and its first-character map. Nothing here
// is guarded: construction rewrites the library-wide syntax tables, and an
// object and its copies belong to one thread at a time.
#ifndef ZNUTIL_REGEX_ZNREGULAREXPRESSION_H
#define ZNUTIL_REGEX_ZNREGULAREXPRESSION_H

#include <znutil/platform/Export.h>
#include <znutil/regex/regexpr.h>
#include <znutil/text/ZnString.h>

namespace znutil::detail {
struct ZnRegularExpressionShare;
}

class ZNUTIL_API ZnRegularExpression {
 public:
  /// Stores and compiles the pattern; a bad pattern leaves the object invalid.
  ZnRegularExpression(ZnString const &pattern);
  /// Shares the compiled program and first-character map of `other`.
  ZnRegularExpression(ZnRegularExpression const &other);
  /// Lets go of what this object held, then shares what `other` holds.
  ZnRegularExpression &operator=(ZnRegularExpression const &other);
  /// Frees the map and the program when the last copy goes.
  virtual ~ZnRegularExpression();

  /// Whether the pattern compiled.
  bool Valid() const { return bValid; }
  /// The compile message; empty when valid.
  ZnString const &CompileErrorString() const { return fsCompileError; }
  /// Gives the program a first-character map, once; results stay the same.
  void Optimize();
  /// Searches the whole text; the match may begin at any offset up to its
  /// length. False both for no match and for an exhausted failure stack;
  /// GaveUp tells the two apart.
  bool Matches(ZnString const &text);
  /// Whether the latest Matches found something.
  bool HaveMatch() const { return iMatchPosition >= 0; }
  /// Whether the latest Matches gave up (failure stack or work bound
  /// exhausted) rather than found no match; Matches is false either way.
  bool GaveUp() const { return iMatchPosition == -2; }
  /// Offsets of the latest match.
  int MatchedStart() const { return rrRegisters.start[0]; }
  int MatchedEnd() const { return rrRegisters.end[0]; }
  /// Offsets of a group of the latest match, -1 when it took no part
  /// (and for a register number outside 0 to 9).
  int RegisterStart(int n) const { return InRange(n) ? rrRegisters.start[n] : -1; }
  int RegisterEnd(int n) const { return InRange(n) ? rrRegisters.end[n] : -1; }
  /// The number of "(" in the pattern, wherever they stand (escaped or in a
  /// set too), or 0 when the pattern did not compile. Deliberately a plain
  /// count: it may exceed the nine registers there are.
  int RegisterCount() const { return iRegisterCount; }

  /// A file-name wildcard as a pattern: * is .*, ? is ., . is \., framed by
  /// ^ and $. No other character is escaped, so + ( ) [ ] ^ $ | and \ keep
  /// their pattern meaning: deliberate.
  static ZnString DosToRegEx(ZnString const &wildcard);

 private:
  static bool InRange(int n) { return n >= 0 && n < REGEXPR_REGISTERS; }
  void Initialize();
  void Share(ZnRegularExpression const &other);
  void Release();

  ZnString fsPattern;
  ZnString fsCompileError;
  int iMatchPosition;
  int iRegisterCount;
  bool bValid;
  regexpr_buffer rbCompiled;
  regexpr_registers rrRegisters;
  /// Counts the copies and holds the map that Optimize allocated.
  znutil::detail::ZnRegularExpressionShare *pShare;
};

#endif  // ZNUTIL_REGEX_ZNREGULAREXPRESSION_H
