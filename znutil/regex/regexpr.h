// The regexpr engine: a pattern compiler that produces a compact byte
// program, and a backtracking matcher and searcher that interpret it.
//
//   regexpr_buffer program = {};                 // pointers and counts zero
//   regexpr_set_syntax(499);
//   if (char const *error = regexpr_compile("(ab)+c", 6, &program)) { ... }
//   regexpr_registers regs;
//   int at = regexpr_search(&program, text, size, 0, size, &regs);
//   ZenoUtilFree(program.buffer);
//
// The syntax options and the character tables are library-wide and
// unguarded: compiling and matching must happen under the same option value,
// and a client that compiles or matches on several threads serialises it.
// Matching may rewrite the program in place (a loop is turned into a cheaper
// form the first time it runs), so a program is not shared between threads
// either. ZnRegularExpression is the usual way in.
#ifndef ZNUTIL_REGEX_REGEXPR_H
#define ZNUTIL_REGEX_REGEXPR_H

#include <znutil/platform/Export.h>

/// Syntax option bits; regexpr_set_syntax takes their sum.
constexpr int SYNTAX_BARE_PARENS = 1;         ///< ( and ) group bare; \( and \) are literal.
constexpr int SYNTAX_BARE_VBAR = 2;           ///< | alternates bare; \| is literal.
constexpr int SYNTAX_QUOTED_PLUS_QM = 4;      ///< + and ? need a backslash.
constexpr int SYNTAX_VBAR_OVER_ANCHORS = 8;   ///< | binds tighter than ^ and $.
constexpr int SYNTAX_NEWLINE_ALTERNATES = 16; ///< a newline in a pattern alternates as | does.
constexpr int SYNTAX_STRICT_OPERATORS = 32;   ///< a misplaced operator is an error, not a literal.
constexpr int SYNTAX_ESCAPE_SEQUENCES = 64;   ///< \n, \x41 and the like; \v is an extended back-reference.
constexpr int SYNTAX_NO_WORD_OPERATORS = 128; ///< \w \W \< \> \b \B \` \' are off.
constexpr int SYNTAX_FOLD_CASE = 256;         ///< literal characters (only they) ignore case.

/// Number of registers: 0 is the whole match, 1 to 9 the first nine groups.
constexpr int REGEXPR_REGISTERS = 10;

/// A compiled pattern. The caller owns it, zeroes it before the first
/// compile and frees `buffer` (and a `first_map` it supplied) with ZenoUtilFree.
struct regexpr_buffer {
  unsigned char *buffer;      ///< the byte program, from ZenoUtilAlloc
  int allocated;              ///< bytes allocated
  int used;                   ///< bytes of program
  unsigned char *first_map;   ///< 256 bytes supplied by the caller, or null
  unsigned char *translate;   ///< optional 256-byte character translation, or null
  char first_map_valid;       ///< 1 when first_map agrees with the program
  char empty_match;           ///< 0 cannot match empty, 1 can, 2 can at a line end
  char has_groups;            ///< 1 when the program uses registers
  char anchor;                ///< 0 none, 1 line start, 2 buffer start
};

/// Where each register matched, as offsets from the start of the text; -1 when unset.
struct regexpr_registers {
  int start[REGEXPR_REGISTERS];
  int end[REGEXPR_REGISTERS];
};

/// Installs a new option value and rebuilds the tables; returns the former value.
ZNUTIL_API int regexpr_set_syntax(int syntax);
/// Rebuilds the token tables from the option value in force.
ZNUTIL_API void regexpr_initialize();
/// Compiles `size` pattern bytes (a zero byte is an ordinary literal).
/// Returns null on success, otherwise one of the engine's constant messages;
/// the program built so far stays in the buffer.
ZNUTIL_API char const *regexpr_compile(char const *pattern, int size, regexpr_buffer *buffer);
/// Fills first_map (when the caller supplied one and it is stale),
/// empty_match and anchor.
ZNUTIL_API void regexpr_compile_first_map(regexpr_buffer *buffer);

/// Matches at offset `start` of the text made of part1 followed by part2,
/// reading nothing at or beyond offset `stop`. Returns the match length,
/// -1 for no match, -2 when the failure stack (or the work bound) ran out.
ZNUTIL_API int regexpr_match_parts(regexpr_buffer *buffer, char const *part1, int size1, char const *part2,
                                   int size2, int start, regexpr_registers *registers, int stop);
/// regexpr_match_parts over a single part, stopping at its end.
ZNUTIL_API int regexpr_match(regexpr_buffer *buffer, char const *text, int size, int start,
                             regexpr_registers *registers);
/// Tries start, start + 1, ... (start - 1, ... for a negative range) for
/// |range| further positions; returns the first offset where a match begins,
/// -1 or -2.
ZNUTIL_API int regexpr_search_parts(regexpr_buffer *buffer, char const *part1, int size1, char const *part2,
                                    int size2, int start, int range, regexpr_registers *registers, int stop);
/// regexpr_search_parts over a single part, stopping at its end.
ZNUTIL_API int regexpr_search(regexpr_buffer *buffer, char const *text, int size, int start, int range,
                              regexpr_registers *registers);

/// Compiles a zero-terminated pattern into the one library-wide buffer.
/// Null keeps the previous pattern (and is "Out of memory" before the first).
ZNUTIL_API char const *regexpr_static_compile(char const *pattern);
/// Whether the library-wide pattern matches anywhere in a zero-terminated text.
ZNUTIL_API int regexpr_static_search(char const *text);

#endif  // ZNUTIL_REGEX_REGEXPR_H
