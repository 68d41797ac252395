// The star_jump rewrite. A loop whose operand cannot overlap what follows it
// never needs to come back to an earlier round, so its failure entry can be
// moved along instead of pushing one entry a round.
#include <cstdio>
#include <cstdlib>

#include <znutil/regex/internal/RegexprProgram.h>
#include <znutil/regex/internal/RegexprStarJump.h>

namespace {

using namespace znutil::detail;

bool ConsumesNothing(unsigned char op) {
  switch (op) {
    case op_line_start: case op_line_end: case op_group_open: case op_group_close: case op_text_start:
    case op_text_end: case op_word_start: case op_word_end: case op_word_edge: case op_not_word_edge:
      return true;
    default:
      return false;
  }
}

bool IsJump(unsigned char op) { return op >= op_jump && op <= op_branch_enter; }

// Whether a byte that the character instruction at `code` accepts (as the
// matcher translates and folds it) is in the map. Any other instruction
// counts as overlapping.
bool Overlaps(unsigned char const *code, unsigned char const *map, bool foldCase) {
  auto accepts = [code, foldCase](unsigned c) {
    switch (code[0]) {
      case op_char: return (foldCase ? FoldCase(static_cast<unsigned char>(c)) : c) == code[1];
      case op_set: return SetHas(code + 1, c);
      default: return c != '\n';  // op_any
    }
  };
  if (code[0] != op_char && code[0] != op_set && code[0] != op_any) return true;
  for (unsigned c = 0; c < 256; ++c) {
    if (map[c] && accepts(c)) return true;
  }
  return false;
}

// Walks the rest of the operand; true when it reaches the star_jump at `at`
// without meeting a jump or a branch.
bool RestIsPlain(unsigned char const *program, int from, int at) {
  int i = from;
  while (i < at) {
    unsigned char const op = program[i];
    if (op >= kOpcodeCount) {
      std::printf("regexpr: processing star_jump: unknown op %d\n", op);
      ++i;
      continue;
    }
    if (IsJump(op)) return false;
    // op_end is written once, last, so it never lies inside a loop.
    if (op == op_end) std::abort();
    i += kInstructionSize[op];
  }
  return i == at;
}

bool CanUpdate(unsigned char const *program, int used, int at, bool foldCase) {
  int const loop = JumpTarget(program, at);
  if (loop < 0 || loop + 3 > at || program[loop] != op_branch) return false;
  unsigned char map[256];
  char emptyMatch;
  if (!ComputeFirstMap(program, used, at + 3, map, &emptyMatch)) return false;
  int i = loop + 3;
  while (i < at && ConsumesNothing(program[i])) i += kInstructionSize[program[i]];
  if (i >= at || Overlaps(program + i, map, foldCase)) return false;
  return RestIsPlain(program, i + kInstructionSize[program[i]], at);
}

}  // namespace

namespace znutil::detail {

void RewriteStarJump(unsigned char *program, int used, int at, bool foldCase) {
  if (CanUpdate(program, used, at, foldCase)) {
    program[at] = op_branch_update;
    SetDisplacement(program + at, Displacement(program + at) + 3);  // straight to the operand
  } else {
    program[at] = op_jump;
  }
}

}  // namespace znutil::detail
