// The memo of failed states that keeps backtracking linear where it can.
//
// A state is a join offset of the program (an offset some jump or branch
// leads to) and a text position. Without back references, what the matcher
// does from a state does not depend on how it got there: it reads the text
// and the program, writes registers and the failure entry under it, pushes
// and pops entries above it. So once a state has failed (the matcher popped
// below the height it had on arriving), arriving there again can be replaced
// by what that first visit did, without doing it: the same registers and the
// same entry under it get their last values, the stack would have risen as
// high (and so overflows exactly where it would have), and then it fails.
// Every result and register stays as it is without the memo.
//
// Arriving at a state whose first visit is still going on means that visit
// came back to where it began without failing or matching: since what
// follows is the same each time, it would go round for ever, pushing the
// failure stack until it overflows (or without end, which the work bound
// stops). Either way the call gives up, and it can do so at once.
#ifndef ZNUTIL_REGEX_INTERNAL_REGEXPRMEMO_H
#define ZNUTIL_REGEX_INTERNAL_REGEXPRMEMO_H

#include <cstdint>
#include <memory>
#include <vector>

namespace znutil::detail {

/// Register slots: 0-9 the starts of registers 0-9, 10-19 their ends.
constexpr int kRegexprSlots = 20;

/// What a failed visit of a state did, as seen from outside it.
struct RegexprFailure {
  int rise;                ///< how far the failure stack rose above its height on arriving
  int topOffset;           ///< last position written into the entry under it, or -1
  int topPart;             ///< the text part of that position
  std::uint32_t slots;     ///< register slots written, one bit each
  int const *values;       ///< their last values, in slot order
};

class RegexprMemo {
 public:
  /// Prepares for a program over a text of `positions` offsets. False when
  /// the program does not suit: a back reference, or bytes that do not read
  /// as whole instructions with every jump between them.
  bool Prepare(unsigned char const *program, int used, int positions);

  bool IsJoin(int offset) const { return join_[offset] >= 0; }

  enum class State { kNew, kFailed, kGoingOn };
  /// At a join offset: kFailed, with `*failure` filled, when the state is
  /// known to fail; kGoingOn when its first visit has not ended; otherwise
  /// starts watching the visit that begins here.
  State Arrive(int offset, int position, int height, RegexprFailure *failure);
  /// The failure stack popped down to entry `landed` (-1: it emptied): every
  /// visit that began above it failed.
  void Unwind(int landed);

  void NoteHeight(int height);
  void NotePush(int height);
  void NoteRegister(int slot, int value) {
    value_[slot] = value;
    slotStamp_[slot] = ++clock_;
  }
  void NoteTopWrite(int index, int offset, int part) {
    top_[index] = Position{offset, part};
    topStamp_[index] = ++clock_;
  }
  /// A loop updated an entry where there was none: such visits cannot be
  /// replayed, so the memo stops being used.
  void Break() { broken_ = true; }

 private:
  struct Position {
    int offset;
    int part;
  };
  struct Visit {
    int join;
    int position;
    int height;
    int highest;
    std::uint64_t start;
  };
  struct Record {
    int rise;
    Position top;
    std::uint32_t slots;
    int values;  // index into values_
  };

  void Remember(Visit const &visit);
  std::uint32_t *Row(int join);

  std::vector<int> join_;  // join index of each offset, or -1
  int joins_ = 0;
  int positions_ = 0;
  std::vector<std::unique_ptr<std::uint32_t[]>> rows_;  // per join, per position: 0 unknown
  std::int64_t cellsLeft_ = 0;
  std::vector<Record> records_;
  std::vector<int> values_;
  std::vector<Visit> visits_;
  std::uint64_t clock_ = 0;
  int value_[kRegexprSlots] = {};
  std::uint64_t slotStamp_[kRegexprSlots] = {};
  std::vector<Position> top_;
  std::vector<std::uint64_t> topStamp_;
  bool broken_ = false;
};

}  // namespace znutil::detail

#endif  // ZNUTIL_REGEX_INTERNAL_REGEXPRMEMO_H
