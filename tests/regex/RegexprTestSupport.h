// Helpers for the regexpr engine tests: a compiled pattern that frees itself,
// and a small notation for expected byte programs.
#ifndef ZNUTIL_TESTS_REGEX_REGEXPRTESTSUPPORT_H
#define ZNUTIL_TESTS_REGEX_REGEXPRTESTSUPPORT_H

#include <initializer_list>
#include <string>
#include <vector>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/regex/regexpr.h>

namespace regex_test {

using Bytes = std::vector<unsigned char>;

/// The option value of ZnRegularExpression.
constexpr int kDefaultSyntax = 499;
/// 499 with the word and buffer operators on.
constexpr int kWordSyntax = kDefaultSyntax & ~SYNTAX_NO_WORD_OPERATORS;

enum Opcode : unsigned char {
  kEnd, kLineStart, kLineEnd, kSet, kChar, kAny, kGroupOpen, kGroupClose, kBackref, kJump, kStarJump, kBranch,
  kBranchUpdate, kBranchEnter, kTextStart, kTextEnd, kWordStart, kWordEnd, kWordEdge, kNotWordEdge, kWordChar,
  kNotWordChar
};

inline Bytes Op(unsigned char op) { return {op}; }
inline Bytes Op(unsigned char op, unsigned char operand) { return {op, operand}; }
inline Bytes Char(char c) { return {kChar, static_cast<unsigned char>(c)}; }
inline Bytes Jump(unsigned char op, int displacement) {
  return {op, static_cast<unsigned char>(displacement & 0xFF), static_cast<unsigned char>((displacement >> 8) & 0xFF)};
}
inline Bytes Program(std::initializer_list<Bytes> parts) {
  Bytes all;
  for (Bytes const &part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

/// A pattern compiled under a syntax; matching sets the same syntax again,
/// since the matcher reads the option value in force.
class Compiled {
 public:
  explicit Compiled(std::string const &pattern, int syntax = kDefaultSyntax) : syntax_(syntax) {
    regexpr_set_syntax(syntax);
    error_ = regexpr_compile(pattern.data(), static_cast<int>(pattern.size()), &buffer_);
  }
  Compiled(Compiled const &) = delete;
  Compiled &operator=(Compiled const &) = delete;
  ~Compiled() {
    ZenoUtilFree(buffer_.buffer);
    ZenoUtilFree(buffer_.first_map);
  }

  char const *Error() const { return error_; }
  Bytes ProgramBytes() const { return Bytes(buffer_.buffer, buffer_.buffer + buffer_.used); }
  regexpr_buffer *Buffer() { return &buffer_; }

  /// Gives the buffer a first-character map, as Optimize does.
  void AddFirstMap() {
    buffer_.first_map = static_cast<unsigned char *>(ZenoUtilAlloc(256));
    regexpr_set_syntax(syntax_);
    regexpr_compile_first_map(&buffer_);
  }
  int Match(std::string const &text, int start = 0, regexpr_registers *regs = nullptr) {
    regexpr_set_syntax(syntax_);
    return regexpr_match(&buffer_, text.data(), static_cast<int>(text.size()), start, regs);
  }
  int Search(std::string const &text, int start, int range, regexpr_registers *regs = nullptr) {
    regexpr_set_syntax(syntax_);
    return regexpr_search(&buffer_, text.data(), static_cast<int>(text.size()), start, range, regs);
  }
  int Search(std::string const &text, regexpr_registers *regs = nullptr) {
    return Search(text, 0, static_cast<int>(text.size()), regs);
  }

 private:
  int syntax_;
  regexpr_buffer buffer_ = {};
  char const *error_ = nullptr;
};

}  // namespace regex_test

#endif  // ZNUTIL_TESTS_REGEX_REGEXPRTESTSUPPORT_H
