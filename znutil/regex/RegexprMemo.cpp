#include <znutil/regex/internal/RegexprMemo.h>

#include <algorithm>
#include <new>

#include <znutil/regex/internal/RegexprProgram.h>

namespace znutil::detail {

namespace {

// Room for remembered states: 64 MiB of cells. Past it, states that have
// no row yet are no longer remembered.
constexpr std::int64_t kMaxCells = std::int64_t{1} << 24;
// A cell holds 0 (unknown), kGoingOn, the rise + 1 of a failure that wrote
// nothing outside itself, or kRecordBit and the index of its record.
constexpr std::uint32_t kRecordBit = 0x80000000u;
constexpr std::uint32_t kGoingOn = 0xFFFFFFFFu;

bool IsJump(unsigned char op) { return op >= op_jump && op <= op_branch_enter; }

}  // namespace

bool RegexprMemo::Prepare(unsigned char const *program, int used, int positions) {
  std::vector<char> boundary(static_cast<std::size_t>(used) + 1, 0);
  int at = 0;
  while (at < used) {
    unsigned char const op = program[at];
    if (op >= kOpcodeCount || op == op_backref || kInstructionSize[op] > used - at) return false;
    boundary[static_cast<std::size_t>(at)] = 1;
    at += kInstructionSize[op];
  }
  boundary[static_cast<std::size_t>(used)] = 1;  // a jump there runs off the end and fails
  join_.assign(static_cast<std::size_t>(used) + 1, -1);
  // Only a failed compile leaves a jump outside the program: it fails where
  // it stands and leads nowhere, so it adds no state to remember.
  auto mark = [&](int target) {
    if (target < 0 || target > used) return true;
    if (!boundary[static_cast<std::size_t>(target)]) return false;
    if (target < used && join_[static_cast<std::size_t>(target)] < 0) join_[static_cast<std::size_t>(target)] = joins_++;
    return true;
  };
  for (at = 0; at < used; at += kInstructionSize[program[at]]) {
    if (!IsJump(program[at])) continue;
    int const target = JumpTarget(program, at);
    if (!mark(target)) return false;
    // A star_jump may become an op_branch_update that enters the operand.
    if (program[at] == star_jump && target < used && program[target] == op_branch && !mark(target + 3)) return false;
  }
  rows_.resize(static_cast<std::size_t>(joins_));
  positions_ = positions;
  cellsLeft_ = kMaxCells;
  return true;
}

void RegexprMemo::NotePush(int height) {
  NoteHeight(height);
  auto const index = static_cast<std::size_t>(height - 1);
  if (index >= top_.size()) {
    top_.resize(index + 1);
    topStamp_.resize(index + 1);
  }
  topStamp_[index] = 0;
}

RegexprMemo::State RegexprMemo::Arrive(int offset, int position, int height, RegexprFailure *failure) {
  if (broken_) return State::kNew;
  int const join = join_[static_cast<std::size_t>(offset)];
  std::uint32_t *row = Row(join);
  if (!row) return State::kNew;  // out of room: this state goes unwatched
  std::uint32_t const cell = row[position];
  if (cell == 0) {
    row[position] = kGoingOn;
    visits_.push_back(Visit{join, position, height, height, clock_});
    return State::kNew;
  }
  if (cell == kGoingOn) return State::kGoingOn;
  if (cell & kRecordBit) {
    Record const &record = records_[cell & ~kRecordBit];
    *failure = RegexprFailure{record.rise, record.top.offset, record.top.part, record.slots,
                              values_.data() + record.values};
  } else {
    *failure = RegexprFailure{static_cast<int>(cell) - 1, -1, 0, 0, nullptr};
  }
  return State::kFailed;
}

void RegexprMemo::NoteHeight(int height) {
  if (!visits_.empty()) visits_.back().highest = std::max(visits_.back().highest, height);
}

void RegexprMemo::Unwind(int landed) {
  while (!visits_.empty() && visits_.back().height > landed) {
    Visit const visit = visits_.back();
    visits_.pop_back();
    NoteHeight(visit.highest);  // the enclosing visit rose as high
    Remember(visit);
  }
}

void RegexprMemo::Remember(Visit const &visit) {
  std::uint32_t *row = rows_[static_cast<std::size_t>(visit.join)].get();
  Record record{visit.highest - visit.height, Position{-1, 0}, 0, static_cast<int>(values_.size())};
  for (int slot = 0; slot < kRegexprSlots; ++slot) {
    if (slotStamp_[slot] <= visit.start) continue;
    record.slots |= std::uint32_t{1} << slot;
    values_.push_back(value_[slot]);
  }
  if (visit.height > 0 && topStamp_[static_cast<std::size_t>(visit.height - 1)] > visit.start) {
    record.top = top_[static_cast<std::size_t>(visit.height - 1)];
  }
  std::uint32_t &cell = row[visit.position];
  if (record.slots == 0 && record.top.offset < 0) {
    cell = static_cast<std::uint32_t>(record.rise) + 1;
  } else {
    cell = kRecordBit | static_cast<std::uint32_t>(records_.size());
    records_.push_back(record);
  }
}

std::uint32_t *RegexprMemo::Row(int join) {
  std::unique_ptr<std::uint32_t[]> &row = rows_[static_cast<std::size_t>(join)];
  if (!row && cellsLeft_ >= positions_) {
    row.reset(new (std::nothrow) std::uint32_t[static_cast<std::size_t>(positions_)]());
    cellsLeft_ -= positions_;
  }
  return row.get();
}

}  // namespace znutil::detail
