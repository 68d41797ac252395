// regexpr_compile: one pass over the pattern that emits the byte program,
// inserting branches in front of an operand when its operator arrives.
//
// Precedence levels (0 end, 1 close, 2 alternation, 3 anchors, 4 atoms and
// postfix operators) drive the structure: the compiler remembers where each
// level started at each nesting depth, so that a postfix operator wraps just
// the last atom, an alternation the whole alternative, and the jumps that end
// alternatives are patched when a lower level arrives.
#include <climits>
#include <cstdlib>
#include <cstring>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/regex/internal/RegexprProgram.h>

char const znutil::detail::kRegexprOutOfMemory[] = "Out of memory";

namespace {

using namespace znutil::detail;

char const *const kOutOfMemory = kRegexprOutOfMemory;
char const kEndsPrematurely[] = "Regular expression ends prematurely";
char const kBadHex[] = "Bad hexadecimal number";
char const kBadRegister[] = "Bad match register number";
char const kTooComplex[] = "Regular expression too complex";
char const kBadParenthesis[] = "Badly placed parenthesis";
char const kBadSpecial[] = "Badly placed special character";

constexpr int kLevels = 5;
constexpr int kMaxDepths = 100;
constexpr int kMaxFutureJumps = 100;
constexpr int kGrowthStep = 256;

int HexValue(unsigned char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool IsDigit(unsigned char c) { return c >= '0' && c <= '9'; }

class Compiler {
 public:
  Compiler(unsigned char const *pattern, int size, regexpr_buffer *out)
      : pattern_(pattern), size_(size), out_(out), tables_(g_regexprTables),
        foldCase_((g_regexprSyntax & SYNTAX_FOLD_CASE) != 0) {}

  char const *Run();

 private:
  // Input.
  unsigned char Translate(unsigned char c) const { return out_->translate ? out_->translate[c] : c; }
  bool AtEnd() const { return next_ >= size_; }
  char const *Fetch(int *token);
  char const *EscapeTranslation(unsigned char *c);
  char const *ReadHexByte(unsigned char *c);
  bool AtContextEnd() const;

  // Output.
  char const *Reserve(int bytes);
  char const *Emit(unsigned char opcode);
  char const *Emit(unsigned char opcode, unsigned char operand);
  char const *InsertJump(int at, unsigned char opcode, int target);
  char const *EmitJump(unsigned char opcode, int target);
  char const *PatchJump(int operandAt, int target);
  int &LevelStart() { return levelStarts_[base_ + level_]; }
  void StartAtom() { LevelStart() = pos_; }

  // Tokens.
  char const *SetLevel(int level);
  char const *Act(int token);
  char const *Misplaced();
  char const *Literal();
  char const *Atom(unsigned char opcode);
  char const *Atom(unsigned char opcode, unsigned char operand);
  char const *Optional();
  char const *Loop(bool plus);
  char const *Alternate();
  char const *GroupOpen();
  char const *GroupClose();
  char const *Backref();
  char const *LongBackref();
  char const *Set();
  char const *ReadSetByte(unsigned char *c);
  char const *End();

  unsigned char const *pattern_;
  int size_;
  int next_ = 0;
  unsigned char c_ = 0;  // byte of the present token
  regexpr_buffer *out_;
  RegexprTables const &tables_;
  bool foldCase_;

  int pos_ = 0;
  bool contextStart_ = true;
  int level_ = 0;
  int base_ = 0;
  int levelStarts_[kLevels * kMaxDepths] = {};
  int futureJumps_[kMaxFutureJumps];
  int futureCount_ = 0;
  int openRegisters_[REGEXPR_REGISTERS];
  int openCount_ = 0;
  int nextRegister_ = 1;
  int depth_ = 0;
};

char const *Compiler::Run() {
  for (;;) {
    int token = tok_end;
    char const *error = Fetch(&token);
    if (!error) error = SetLevel(tables_.precedence[token]);
    if (!error) error = Act(token);
    if (error || token == tok_end) {
      out_->used = pos_;
      return error;
    }
    contextStart_ = token == tok_group_open || token == tok_alternate;
  }
}

char const *Compiler::Fetch(int *token) {
  if (AtEnd()) {
    *token = tok_end;
    return nullptr;
  }
  c_ = Translate(pattern_[next_++]);
  *token = tables_.plain[c_];
  if (*token != tok_backslash) return nullptr;
  if (AtEnd()) return kEndsPrematurely;
  c_ = pattern_[next_++];
  *token = tables_.quoted[c_];
  if (*token == tok_literal && tables_.escapeSequences) return EscapeTranslation(&c_);
  return nullptr;
}

char const *Compiler::EscapeTranslation(unsigned char *c) {
  switch (*c) {
    case 'a': case 'A': *c = 7; return nullptr;
    case 'b': case 'B': *c = 8; return nullptr;
    case 'f': case 'F': *c = 12; return nullptr;
    case 'n': case 'N': *c = 10; return nullptr;
    case 'r': case 'R': *c = 13; return nullptr;
    case 't': case 'T': *c = 9; return nullptr;
    case 'v': case 'V': *c = 11; return nullptr;
    case 'x': case 'X': return ReadHexByte(c);
    default: *c = Translate(*c); return nullptr;
  }
}

char const *Compiler::ReadHexByte(unsigned char *c) {
  int value = 0;
  for (int digit = 0; digit < 2; ++digit) {
    if (AtEnd()) return kEndsPrematurely;
    int const v = HexValue(pattern_[next_++]);
    if (v < 0) return kBadHex;
    value = value * 16 + v;
  }
  *c = static_cast<unsigned char>(value);
  return nullptr;
}

// Whether the next pattern text ends the present context: an alternation or
// a closing parenthesis, bare or behind a backslash as the options write them.
bool Compiler::AtContextEnd() const {
  if (AtEnd()) return true;
  int token = tables_.plain[Translate(pattern_[next_])];
  if (token == tok_backslash && next_ + 1 < size_) token = tables_.quoted[pattern_[next_ + 1]];
  return token == tok_alternate || token == tok_group_close;
}

char const *Compiler::Reserve(int bytes) {
  if (pos_ + bytes <= out_->allocated) return nullptr;
  bool const fits = out_->allocated <= INT_MAX - kGrowthStep - bytes;
  int const allocated = fits ? out_->allocated + kGrowthStep + bytes : 0;
  void *grown = fits ? ZenoUtilRealloc(out_->buffer, static_cast<unsigned>(allocated)) : nullptr;
  if (!grown) {
    // The old block is freed rather than lost, and the buffer left empty.
    ZenoUtilFree(out_->buffer);
    out_->buffer = nullptr;
    out_->allocated = 0;
    pos_ = 0;
    return kOutOfMemory;
  }
  out_->buffer = static_cast<unsigned char *>(grown);
  out_->allocated = allocated;
  return nullptr;
}

char const *Compiler::Emit(unsigned char opcode) {
  if (char const *error = Reserve(1)) return error;
  out_->buffer[pos_++] = opcode;
  return nullptr;
}

char const *Compiler::Emit(unsigned char opcode, unsigned char operand) {
  if (char const *error = Reserve(2)) return error;
  out_->buffer[pos_++] = opcode;
  out_->buffer[pos_++] = operand;
  return nullptr;
}

// A displacement the 16-bit operand cannot hold makes the pattern too
// complex, rather than a program that jumps to the wrong place. The jump is
// still given a displacement, 0 (the next instruction), so that the partial
// program left behind holds only whole instructions and jumps between them:
// it has no op_end, so it simply never matches.
char const *Compiler::PatchJump(int operandAt, int target) {
  int const displacement = target - (operandAt + 2);
  bool const fits = displacement >= -32768 && displacement <= 32767;
  SetDisplacement(out_->buffer + operandAt - 1, fits ? displacement : 0);
  return fits ? nullptr : kTooComplex;
}

// Shifts the code from `at` up by 3 and writes a jump there; `target` is
// counted after the shift.
char const *Compiler::InsertJump(int at, unsigned char opcode, int target) {
  if (char const *error = Reserve(3)) return error;
  std::memmove(out_->buffer + at + 3, out_->buffer + at, static_cast<size_t>(pos_ - at));
  pos_ += 3;
  out_->buffer[at] = opcode;
  return PatchJump(at + 1, target);
}

char const *Compiler::EmitJump(unsigned char opcode, int target) {
  if (char const *error = Reserve(3)) return error;
  out_->buffer[pos_] = opcode;
  pos_ += 3;
  return PatchJump(pos_ - 2, target);
}

char const *Compiler::SetLevel(int level) {
  if (level > level_) {
    for (int l = level_ + 1; l <= level; ++l) levelStarts_[base_ + l] = pos_;
    level_ = level;
  } else if (level < level_) {
    level_ = level;
    while (futureCount_ > 0 && futureJumps_[futureCount_ - 1] >= levelStarts_[base_ + level]) {
      if (char const *error = PatchJump(futureJumps_[--futureCount_], pos_)) return error;
    }
  }
  return nullptr;
}

char const *Compiler::Act(int token) {
  switch (token) {
    case tok_end: return End();
    case tok_literal: return Literal();
    case tok_any: return Atom(op_any);
    case tok_line_start: return contextStart_ ? Atom(op_line_start) : Misplaced();
    case tok_line_end: return AtContextEnd() ? Atom(op_line_end) : Misplaced();
    case tok_optional: return contextStart_ ? Misplaced() : Optional();
    case tok_star: return contextStart_ ? Misplaced() : Loop(false);
    case tok_plus: return contextStart_ ? Misplaced() : Loop(true);
    case tok_alternate: return Alternate();
    case tok_group_open: return GroupOpen();
    case tok_group_close: return GroupClose();
    case tok_backref: return Backref();
    case tok_long_backref: return LongBackref();
    case tok_set_open: return Set();
    case tok_text_start: return Atom(op_text_start);
    case tok_text_end: return Atom(op_text_end);
    case tok_word_char: return Atom(op_word_char, 1);
    case tok_not_word_char: return Atom(op_not_word_char, 1);
    case tok_word_start: return Atom(op_word_start);
    case tok_word_end: return Atom(op_word_end);
    case tok_word_edge: return Atom(op_word_edge);
    case tok_not_word_edge: return Atom(op_not_word_edge);
  }
  // The token tables hold only the values above, so this cannot be reached.
  std::abort();
}

char const *Compiler::Misplaced() { return tables_.strictOperators ? kBadSpecial : Literal(); }

char const *Compiler::Literal() { return Atom(op_char, foldCase_ ? FoldCase(c_) : c_); }

char const *Compiler::Atom(unsigned char opcode) {
  StartAtom();
  return Emit(opcode);
}

char const *Compiler::Atom(unsigned char opcode, unsigned char operand) {
  StartAtom();
  return Emit(opcode, operand);
}

char const *Compiler::Optional() {
  int const start = LevelStart();
  if (start == pos_) return nullptr;  // empty operand
  return InsertJump(start, op_branch, pos_ + 3);
}

// X* is: op_branch past the loop, X, star_jump back to the op_branch.
// X+ puts op_branch_enter +3 in front, which enters X directly.
char const *Compiler::Loop(bool plus) {
  int const start = LevelStart();
  if (start == pos_) return nullptr;  // empty operand
  if (char const *error = InsertJump(start, op_branch, pos_ + 6)) return error;
  if (char const *error = EmitJump(star_jump, start)) return error;
  return plus ? InsertJump(start, op_branch_enter, start + 6) : nullptr;
}

char const *Compiler::Alternate() {
  int const start = LevelStart();
  if (char const *error = InsertJump(start, op_branch, pos_ + 6)) return error;
  if (futureCount_ == kMaxFutureJumps) return kTooComplex;
  if (char const *error = EmitJump(op_jump, pos_ + 3)) return error;  // operand 0 until patched
  futureJumps_[futureCount_++] = pos_ - 2;
  StartAtom();
  return nullptr;
}

char const *Compiler::GroupOpen() {
  StartAtom();
  if (nextRegister_ < REGEXPR_REGISTERS) {
    out_->has_groups = 1;
    if (char const *error = Emit(op_group_open, static_cast<unsigned char>(nextRegister_))) return error;
    openRegisters_[openCount_++] = nextRegister_++;
  }
  ++depth_;
  if (base_ == kLevels * (kMaxDepths - 1)) return kTooComplex;
  base_ += kLevels;
  level_ = 0;
  StartAtom();
  return nullptr;
}

// Records no level start: the start recorded by the opening parenthesis
// stays, so that an operator after the group wraps the whole group.
char const *Compiler::GroupClose() {
  if (depth_ < 1) return kBadParenthesis;
  base_ -= kLevels;
  level_ = tables_.precedence[tok_group_open];
  --depth_;
  if (depth_ >= openCount_) return nullptr;
  out_->has_groups = 1;
  return Emit(op_group_close, static_cast<unsigned char>(openRegisters_[--openCount_]));
}

char const *Compiler::Backref() {
  if (c_ == '0') return kBadRegister;
  out_->has_groups = 1;
  return Atom(op_backref, static_cast<unsigned char>(c_ - '0'));
}

// \vUT: the units digit comes first, then the tens digit; this order is the
// format's and is kept.
char const *Compiler::LongBackref() {
  int digits[2];
  for (int &digit : digits) {
    if (AtEnd()) return kEndsPrematurely;
    unsigned char const d = pattern_[next_++];
    if (!IsDigit(d)) return kBadRegister;
    digit = d - '0';
  }
  int const value = digits[0] + 10 * digits[1];
  if (value < 1 || value > 9) return kBadRegister;
  out_->has_groups = 1;
  return Atom(op_backref, static_cast<unsigned char>(value));
}

char const *Compiler::ReadSetByte(unsigned char *c) {
  if (AtEnd()) return kEndsPrematurely;
  *c = Translate(pattern_[next_++]);
  return nullptr;
}

// [...]: a ] that comes first is a member, a - after a member opens a
// range, a trailing - is a member; [^...] complements (newline included).
char const *Compiler::Set() {
  StartAtom();
  if (char const *error = Reserve(33)) return error;
  int const at = pos_;
  out_->buffer[pos_++] = op_set;
  std::memset(out_->buffer + pos_, 0, 32);
  pos_ += 32;
  unsigned char *bits = out_->buffer + at + 1;
  unsigned char c;
  if (char const *error = ReadSetByte(&c)) return error;
  bool const complement = c == '^';
  if (complement) {
    if (char const *error = ReadSetByte(&c)) return error;
  }
  bool first = true, range = false;
  int previous = -1;
  while (c != ']' || first) {
    first = false;
    if (c == '\\' && tables_.escapeSequences) {
      if (AtEnd()) return kEndsPrematurely;
      c = pattern_[next_++];
      if (char const *error = EscapeTranslation(&c)) return error;
    }
    if (range) {
      for (int v = previous; v <= c; ++v) bits[v >> 3] |= static_cast<unsigned char>(1 << (v & 7));
      previous = -1;
      range = false;
    } else if (previous != -1 && c == '-') {
      range = true;
    } else {
      bits[c >> 3] |= static_cast<unsigned char>(1 << (c & 7));
      previous = c;
    }
    if (char const *error = ReadSetByte(&c)) return error;
  }
  if (range) bits['-' >> 3] |= 1 << ('-' & 7);
  if (complement) {
    for (int i = 0; i < 32; ++i) bits[i] = static_cast<unsigned char>(~bits[i]);
  }
  return nullptr;
}

char const *Compiler::End() {
  if (base_ != 0) return kBadParenthesis;
  return Emit(op_end);
}

}  // namespace

char const *regexpr_compile(char const *pattern, int size, regexpr_buffer *buffer) {
  if (!g_regexprTables.initialised) regexpr_initialize();
  buffer->used = 0;
  buffer->first_map_valid = 0;
  buffer->has_groups = 0;
  if (buffer->allocated == 0 || !buffer->buffer) {
    buffer->buffer = static_cast<unsigned char *>(ZenoUtilAlloc(kGrowthStep));
    if (!buffer->buffer) return kOutOfMemory;
    buffer->allocated = kGrowthStep;
  }
  // A negative size or a null pattern compiles as the empty pattern.
  int const length = pattern && size > 0 ? size : 0;
  Compiler compiler(reinterpret_cast<unsigned char const *>(pattern), length, buffer);
  return compiler.Run();
}
