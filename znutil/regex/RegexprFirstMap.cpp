// The first-character map: which bytes can begin a match of a program from
// a given offset. The search uses it to skip start positions, and the
// matcher to decide whether a loop may keep a single failure entry.
#include <cstdlib>
#include <cstring>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/regex/internal/RegexprProgram.h>

namespace {

using namespace znutil::detail;

constexpr int kStackVisited = 512;

// Offsets still to walk are kept in a work list rather than on the call
// stack, so that a long program of branches cannot exhaust the stack. Each
// offset is marked when it is first queued or jumped to, so the result is
// that of a depth-first walk in whatever order the offsets are taken.
class FirstMapWalk {
 public:
  FirstMapWalk(unsigned char const *program, int used, unsigned char *visited, int *work, unsigned char *map,
               char *emptyMatch)
      : program_(program), used_(used), visited_(visited), work_(work), map_(map), emptyMatch_(emptyMatch),
        foldCase_((g_regexprSyntax & SYNTAX_FOLD_CASE) != 0) {}

  void Run(int from) {
    if (Mark(from)) work_[count_++] = from;
    while (count_ > 0) WalkFrom(work_[--count_]);
  }

 private:
  bool Mark(int at) {
    if (at < 0 || at >= used_ || visited_[at]) return false;
    visited_[at] = 1;
    return true;
  }
  void AddWhere(bool (*accepts)(unsigned char const *, unsigned), unsigned char const *operand) {
    for (unsigned c = 0; c < 256; ++c) {
      if (accepts(operand, c)) map_[c] = 1;
    }
  }
  void WalkFrom(int at);
  bool Step(int *at);

  unsigned char const *program_;
  int used_;
  unsigned char *visited_;
  int *work_;
  int count_ = 0;
  unsigned char *map_;
  char *emptyMatch_;
  bool foldCase_;
};

void FirstMapWalk::WalkFrom(int at) {
  // A program cut short by a failed compile just ends the walk.
  while (at < used_ && program_[at] < kOpcodeCount && at + kInstructionSize[program_[at]] <= used_) {
    if (!Step(&at)) return;
  }
  // The compiler writes whole instructions with known opcodes at every
  // offset the walk can reach, so an unknown opcode cannot occur.
  if (at < used_ && program_[at] >= kOpcodeCount) std::abort();
}

// Handles the instruction at *at; false when the walk stops there.
bool FirstMapWalk::Step(int *at) {
  unsigned char const *code = program_ + *at;
  switch (code[0]) {
    case op_end:
      *emptyMatch_ = 1;
      return false;
    case op_line_end:
      map_[unsigned{'\n'}] = 1;
      if (*emptyMatch_ == 0) *emptyMatch_ = 2;
      return false;
    case op_set:
      AddWhere([](unsigned char const *bits, unsigned c) { return SetHas(bits, c); }, code + 1);
      return false;
    case op_char:
      map_[code[1]] = 1;
      if (foldCase_) map_[UpperCase(code[1])] = 1;
      return false;
    case op_any:
      AddWhere([](unsigned char const *, unsigned c) { return c != '\n'; }, code);
      return false;
    case op_backref:
      std::memset(map_, 1, 256);
      *emptyMatch_ = 1;
      return false;
    case op_word_char:
      AddWhere([](unsigned char const *v, unsigned c) { return g_regexprTables.word[c] == v[0]; }, code + 1);
      return false;
    case op_not_word_char:
      AddWhere([](unsigned char const *v, unsigned c) { return g_regexprTables.word[c] != v[0]; }, code + 1);
      return false;
    case op_jump: case star_jump: case op_branch_update: case op_branch_enter:
      *at = JumpTarget(program_, *at);
      return Mark(*at);
    case op_branch: {
      int const target = JumpTarget(program_, *at);
      if (Mark(target)) work_[count_++] = target;
      *at += 3;
      return true;
    }
    default:  // positions and group marks consume nothing
      *at += kInstructionSize[code[0]];
      return true;
  }
}

}  // namespace

namespace znutil::detail {

bool ComputeFirstMap(unsigned char const *program, int used, int from, unsigned char *map, char *emptyMatch) {
  unsigned char visitedOnStack[kStackVisited];
  int workOnStack[kStackVisited / 3 + 2];
  unsigned char *visited = visitedOnStack;
  int *work = workOnStack;
  void *block = nullptr;
  if (used > kStackVisited) {
    // One queued offset per op_branch at most, and each takes 3 bytes.
    int const workSize = used / 3 + 2;
    block = ZenoUtilAlloc(static_cast<unsigned>(workSize * sizeof(int) + used));
    if (!block) return false;
    work = static_cast<int *>(block);
    visited = reinterpret_cast<unsigned char *>(work + workSize);
  }
  *emptyMatch = 0;
  std::memset(map, 0, 256);
  std::memset(visited, 0, used > 0 ? static_cast<size_t>(used) : 0);
  FirstMapWalk(program, used, visited, work, map, emptyMatch).Run(from);
  ZenoUtilFree(block);
  return true;
}

}  // namespace znutil::detail

void regexpr_compile_first_map(regexpr_buffer *buffer) {
  if (!buffer->first_map || buffer->first_map_valid) return;
  if (!ComputeFirstMap(buffer->buffer, buffer->used, 0, buffer->first_map, &buffer->empty_match)) return;
  int const first = buffer->used > 0 ? buffer->buffer[0] : int{op_end};
  buffer->anchor = first == op_line_start ? 1 : first == op_text_start ? 2 : 0;
  buffer->first_map_valid = 1;
}
