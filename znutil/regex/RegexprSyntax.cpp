// The library-wide syntax option value and the tables built from it.
#include <cstring>

#include <znutil/regex/internal/RegexprProgram.h>

namespace znutil::detail {

RegexprTables g_regexprTables;
int g_regexprSyntax = 0;

unsigned char const kInstructionSize[kOpcodeCount] = {
    1, 1, 1, 33, 2, 1, 2, 2, 2,  // op_end .. op_backref
    3, 3, 3, 3, 3,               // the jumps and branches
    1, 1, 1, 1, 1, 1,            // text and word positions
    2, 2};                       // op_word_char, op_not_word_char

}  // namespace znutil::detail

namespace {

using namespace znutil::detail;

void BuildWordTable(RegexprTables &t) {
  if (t.wordDone) return;
  std::memset(t.word, 0, sizeof t.word);
  for (int c = 'a'; c <= 'z'; ++c) t.word[c] = 1;
  for (int c = 'A'; c <= 'Z'; ++c) t.word[c] = 1;
  for (int c = '0'; c <= '9'; ++c) t.word[c] = 1;
  t.wordDone = 1;
}

void Put(unsigned char *table, unsigned char c, RegexprToken token) { table[c] = token; }

// The token of `c` goes to the plain table when `bare` holds, else to the quoted one.
void SetToken(RegexprTables &t, bool bare, unsigned char c, RegexprToken token) {
  Put(bare ? t.plain : t.quoted, c, token);
}

void SetWordOperators(RegexprTables &t) {
  Put(t.quoted, 'w', tok_word_char);
  Put(t.quoted, 'W', tok_not_word_char);
  Put(t.quoted, '<', tok_word_start);
  Put(t.quoted, '>', tok_word_end);
  Put(t.quoted, 'b', tok_word_edge);
  Put(t.quoted, 'B', tok_not_word_edge);
  Put(t.quoted, '`', tok_text_start);
  Put(t.quoted, '\'', tok_text_end);
}

void SetPrecedences(RegexprTables &t, int syntax) {
  std::memset(t.precedence, 4, sizeof t.precedence);
  bool const vbarOverAnchors = (syntax & SYNTAX_VBAR_OVER_ANCHORS) != 0;
  t.precedence[tok_end] = 0;
  t.precedence[tok_group_close] = 1;
  t.precedence[tok_line_start] = vbarOverAnchors ? 2 : 3;
  t.precedence[tok_line_end] = vbarOverAnchors ? 2 : 3;
  t.precedence[tok_alternate] = vbarOverAnchors ? 3 : 2;
}

}  // namespace

void regexpr_initialize() {
  RegexprTables &t = g_regexprTables;
  int const syntax = g_regexprSyntax;
  BuildWordTable(t);
  std::memset(t.plain, tok_literal, sizeof t.plain);
  std::memset(t.quoted, tok_literal, sizeof t.quoted);
  t.initialised = 1;
  for (int c = '0'; c <= '9'; ++c) t.quoted[c] = tok_backref;
  Put(t.plain, '\\', tok_backslash);
  SetToken(t, syntax & SYNTAX_BARE_PARENS, '(', tok_group_open);
  SetToken(t, syntax & SYNTAX_BARE_PARENS, ')', tok_group_close);
  SetToken(t, syntax & SYNTAX_BARE_VBAR, '|', tok_alternate);
  Put(t.plain, '*', tok_star);
  SetToken(t, !(syntax & SYNTAX_QUOTED_PLUS_QM), '+', tok_plus);
  SetToken(t, !(syntax & SYNTAX_QUOTED_PLUS_QM), '?', tok_optional);
  if (syntax & SYNTAX_NEWLINE_ALTERNATES) Put(t.plain, '\n', tok_alternate);
  Put(t.plain, '[', tok_set_open);
  Put(t.plain, '^', tok_line_start);
  Put(t.plain, '$', tok_line_end);
  Put(t.plain, '.', tok_any);
  if (!(syntax & SYNTAX_NO_WORD_OPERATORS)) SetWordOperators(t);
  if (syntax & SYNTAX_ESCAPE_SEQUENCES) Put(t.quoted, 'v', tok_long_backref);
  SetPrecedences(t, syntax);
  t.strictOperators = (syntax & SYNTAX_STRICT_OPERATORS) != 0;
  t.escapeSequences = (syntax & SYNTAX_ESCAPE_SEQUENCES) != 0;
}

int regexpr_set_syntax(int syntax) {
  int const former = g_regexprSyntax;
  g_regexprSyntax = syntax;
  regexpr_initialize();
  return former;
}
