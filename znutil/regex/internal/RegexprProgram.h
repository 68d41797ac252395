// Internals shared by the regexpr compiler, first-character map and matcher:
// opcodes, tokens, the library-wide tables and small helpers to read the
// byte program.
#ifndef ZNUTIL_REGEX_INTERNAL_REGEXPRPROGRAM_H
#define ZNUTIL_REGEX_INTERNAL_REGEXPRPROGRAM_H

#include <cstdint>

#include <znutil/regex/regexpr.h>

namespace znutil::detail {

/// Opcodes of the byte program; the values are the program's format.
enum RegexprOpcode : unsigned char {
  op_end = 0,
  op_line_start = 1,
  op_line_end = 2,
  op_set = 3,
  op_char = 4,
  op_any = 5,
  op_group_open = 6,
  op_group_close = 7,
  op_backref = 8,
  op_jump = 9,
  star_jump = 10,
  op_branch = 11,
  op_branch_update = 12,
  op_branch_enter = 13,
  op_text_start = 14,
  op_text_end = 15,
  op_word_start = 16,
  op_word_end = 17,
  op_word_edge = 18,
  op_not_word_edge = 19,
  op_word_char = 20,
  op_not_word_char = 21,
};
constexpr int kOpcodeCount = 22;

/// Tokens, the input alphabet of the compiler.
enum RegexprToken : unsigned char {
  tok_end = 0,
  tok_literal = 1,
  tok_any = 2,
  tok_backslash = 3,
  tok_line_start = 4,
  tok_line_end = 5,
  tok_optional = 6,
  tok_star = 7,
  tok_plus = 8,
  tok_alternate = 9,
  tok_group_open = 10,
  tok_group_close = 11,
  tok_backref = 12,
  tok_long_backref = 13,
  tok_set_open = 14,
  tok_text_start = 15,
  tok_text_end = 16,
  tok_word_char = 17,
  tok_not_word_char = 18,
  tok_word_start = 19,
  tok_word_end = 20,
  tok_word_edge = 21,
  tok_not_word_edge = 22,
};
constexpr int kTokenCount = 23;

/// The library-wide tables, rebuilt by regexpr_initialize.
struct RegexprTables {
  unsigned char word[256];        ///< 1 for a-z, A-Z, 0-9 (not underscore)
  unsigned char plain[256];       ///< token of each unquoted byte
  unsigned char quoted[256];      ///< token of each byte behind a backslash
  unsigned char precedence[kTokenCount];
  int initialised;
  int wordDone;
  int strictOperators;            ///< SYNTAX_STRICT_OPERATORS was set at the last initialise
  int escapeSequences;            ///< SYNTAX_ESCAPE_SEQUENCES likewise
};
extern RegexprTables g_regexprTables;
/// The option value in force, read by the compiler and the matcher alike.
extern int g_regexprSyntax;

/// The compile message of a failed allocation.
extern char const kRegexprOutOfMemory[];

/// Bytes of each instruction, opcode included.
extern unsigned char const kInstructionSize[kOpcodeCount];

/// Case folding of literals: ASCII only, whatever the process locale.
inline unsigned char FoldCase(unsigned char c) { return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c; }
inline unsigned char UpperCase(unsigned char c) { return c >= 'a' && c <= 'z' ? c - ('a' - 'A') : c; }

inline bool SetHas(unsigned char const *bits, unsigned c) { return (bits[c >> 3] >> (c & 7)) & 1; }

/// The signed 16-bit displacement of the jump whose opcode is at `code`.
inline int Displacement(unsigned char const *code) { return static_cast<std::int16_t>(code[1] | code[2] << 8); }
inline void SetDisplacement(unsigned char *code, int displacement) {
  code[1] = static_cast<unsigned char>(displacement & 0xFF);
  code[2] = static_cast<unsigned char>((displacement >> 8) & 0xFF);
}
/// Offset a jump at `at` leads to: counted from the byte after its operand.
inline int JumpTarget(unsigned char const *program, int at) { return at + 3 + Displacement(program + at); }

/// Fills `map` (indexed by translated byte) with every byte that can start a
/// match of the program from offset `from`, and sets `*emptyMatch` as the
/// buffer field is set. False when the scratch memory could not be had.
bool ComputeFirstMap(unsigned char const *program, int used, int from, unsigned char *map, char *emptyMatch);

}  // namespace znutil::detail

#endif  // ZNUTIL_REGEX_INTERNAL_REGEXPRPROGRAM_H
