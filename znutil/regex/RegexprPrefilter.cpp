// Builds the pair filter. An attempt that the filter lets the search pass
// over runs only the instructions before the second byte is read; those
// must form no loop (so the attempt fails plainly, without overflowing the
// failure stack) and be few, so that what such attempts would have spent
// of the work bound can be held in reserve.
#include <znutil/regex/internal/RegexprPrefilter.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include <znutil/regex/internal/RegexprProgram.h>

namespace {

using namespace znutil::detail;

// Also keeps a passed-over attempt's failure stack within its frame, so
// that it could not have given up for want of memory either.
constexpr int kMaxAttemptCost = 100;
constexpr int kTooCostly = kMaxAttemptCost + 1;

bool ReadsByte(unsigned char op) {
  return op == op_set || op == op_char || op == op_any || op == op_word_char || op == op_not_word_char;
}

// Instructions an attempt runs from each offset until every path has read
// its first byte (`cost[0]`) or its second (`cost[1]`), counting each path
// through the branches; kTooCostly where a path loops, matches empty or
// refers back before that, or where there are too many.
class AttemptCost {
 public:
  AttemptCost(unsigned char const *program, int used) : program_(program), used_(used) {}

  /// False when the bytes do not read as whole instructions.
  bool Compute();
  int At(int depth, int offset) const { return cost_[depth][static_cast<std::size_t>(offset)]; }
  std::vector<int> const &Offsets() const { return offsets_; }

 private:
  int Target(int depth, int at) const {
    int const target = JumpTarget(program_, at);
    if (target <= at || target > used_ || !boundary_[static_cast<std::size_t>(target)]) return kTooCostly;
    return At(depth, target);
  }
  int Of(int depth, int at) const;

  unsigned char const *program_;
  int used_;
  std::vector<int> offsets_;
  std::vector<char> boundary_;
  std::vector<int> cost_[2];
};

bool AttemptCost::Compute() {
  boundary_.assign(static_cast<std::size_t>(used_) + 1, 0);
  for (int at = 0; at < used_; at += kInstructionSize[program_[at]]) {
    if (program_[at] >= kOpcodeCount || kInstructionSize[program_[at]] > used_ - at) return false;
    boundary_[static_cast<std::size_t>(at)] = 1;
    offsets_.push_back(at);
  }
  boundary_[static_cast<std::size_t>(used_)] = 1;
  for (std::vector<int> &cost : cost_) cost.assign(static_cast<std::size_t>(used_) + 1, 1);  // off the end fails
  // Jumps that count lead forward only, so the costs fill from the end.
  for (auto it = offsets_.rbegin(); it != offsets_.rend(); ++it) {
    for (int depth = 0; depth < 2; ++depth) cost_[depth][static_cast<std::size_t>(*it)] = std::min(Of(depth, *it), kTooCostly);
  }
  return true;
}

int AttemptCost::Of(int depth, int at) const {
  unsigned char const op = program_[at];
  int const next = at + kInstructionSize[op];
  if (ReadsByte(op)) return depth == 0 ? 1 + At(1, next) : 1;
  switch (op) {
    case op_line_end: return 1;  // a start at a line end is never passed over
    case op_end: case op_backref: return depth == 0 ? kTooCostly : 1;
    case op_jump: return 1 + Target(depth, at);
    case op_branch: return 1 + At(depth, next) + Target(depth, at);
    case star_jump: case op_branch_update: case op_branch_enter: return kTooCostly;
    default: return 1 + At(depth, next);  // positions and group marks
  }
}

// Adds the bytes of a first-character map to a row; all of them when the
// map's walk could match without reading a byte.
void AddRow(std::uint64_t *row, unsigned char const *map, char emptyMatch) {
  for (unsigned c = 0; c < 256; ++c) {
    if (emptyMatch == 1 || map[c]) row[c >> 6] |= std::uint64_t{1} << (c & 63);
  }
}

}  // namespace

namespace znutil::detail {

bool BuildRegexprPrefilter(unsigned char const *program, int used, RegexprPrefilter *filter) {
  if (!program || used <= 0) return false;
  AttemptCost cost(program, used);
  if (!cost.Compute() || cost.At(0, 0) > kMaxAttemptCost) return false;
  std::memset(filter->follow, 0, sizeof filter->follow);
  filter->attemptCost = cost.At(0, 0);
  // Offsets an attempt reaches before reading a byte; all lie ahead.
  std::vector<char> reached(static_cast<std::size_t>(used) + 1, 0);
  reached[0] = 1;
  for (int at : cost.Offsets()) {
    if (!reached[static_cast<std::size_t>(at)]) continue;
    unsigned char const op = program[at];
    int const next = at + kInstructionSize[op];
    if (op == op_line_end) {
      std::memset(filter->follow[unsigned{'\n'}], 0xFF, sizeof filter->follow[0]);  // it may match empty here
    } else if (ReadsByte(op)) {
      unsigned char first[256];
      unsigned char second[256];
      char firstEmpty;
      char secondEmpty;
      if (!ComputeFirstMap(program, used, at, first, &firstEmpty) ||
          !ComputeFirstMap(program, used, next, second, &secondEmpty)) {
        return false;
      }
      for (unsigned c = 0; c < 256; ++c) {
        if (first[c]) AddRow(filter->follow[c], second, secondEmpty);
      }
    } else if (op == op_jump) {
      reached[static_cast<std::size_t>(JumpTarget(program, at))] = 1;
    } else {
      if (op == op_branch) reached[static_cast<std::size_t>(JumpTarget(program, at))] = 1;
      reached[static_cast<std::size_t>(next)] = 1;
    }
  }
  return true;
}

}  // namespace znutil::detail
