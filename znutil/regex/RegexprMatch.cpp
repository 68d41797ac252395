// regexpr_match_parts: interprets the byte program against a text by
// backtracking through an explicit failure stack.
//
// Register positions are not saved on the failure stack, so backtracking
// does not undo them: a group that matched on an abandoned path keeps its
// offsets. This is the engine's documented behaviour, not an oversight.
#include <cstdlib>
#include <cstring>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/regex/internal/RegexprMatcher.h>
#include <znutil/regex/internal/RegexprProgram.h>
#include <znutil/regex/internal/RegexprStarJump.h>

namespace {

using namespace znutil::detail;

constexpr int kFrameEntries = 128;
constexpr int kHeapEntries = 4100;

struct BacktrackEntry {
  unsigned char const *text;  // null marks a dummy entry, which popping passes over
  int part;                   // the part that holds `text`
  unsigned char const *code;
};

// 128 entries in the frame; the first overflow moves them to a block of
// 4,100, and the second ends the match.
class FailureStack {
 public:
  FailureStack() = default;
  FailureStack(FailureStack const &) = delete;
  FailureStack &operator=(FailureStack const &) = delete;
  ~FailureStack() {
    if (entries_ != frame_) ZenoUtilFree(entries_);
  }

  bool Push(unsigned char const *text, int part, unsigned char const *code) {
    if (count_ == capacity_ && !Grow()) return false;
    entries_[count_++] = BacktrackEntry{text, part, code};
    return true;
  }
  /// Pops up to the first entry with text; returns its index, or -1 when
  /// the stack emptied.
  int Pop(BacktrackEntry *entry) {
    while (count_ > 0) {
      *entry = entries_[--count_];
      if (entry->text) return count_;
    }
    return -1;
  }
  BacktrackEntry *Top() { return count_ > 0 ? &entries_[count_ - 1] : nullptr; }
  int Height() const { return count_; }
  /// Whether the stack could rise to `height`, growing as pushes would.
  bool Reserve(int height) { return height <= capacity_ || (height <= kHeapEntries && Grow()); }

 private:
  bool Grow() {
    if (entries_ != frame_) return false;
    void *block = ZenoUtilAlloc(kHeapEntries * sizeof(BacktrackEntry));
    if (!block) return false;
    entries_ = static_cast<BacktrackEntry *>(std::memcpy(block, frame_, sizeof frame_));
    capacity_ = kHeapEntries;
    return true;
  }

  BacktrackEntry frame_[kFrameEntries];
  BacktrackEntry *entries_ = frame_;
  int capacity_ = kFrameEntries;
  int count_ = 0;
};

enum class Outcome { kNext, kFail, kMatched, kExhausted };

class Matcher {
 public:
  Matcher(regexpr_buffer *buffer, RegexprText const &text, RegexprWork *work, RegexprMemo *memo)
      : buffer_(buffer), program_(buffer->buffer), used_(buffer->used), translate_(buffer->translate),
        word_(g_regexprTables.word), foldCase_((g_regexprSyntax & SYNTAX_FOLD_CASE) != 0), text_(text), work_(work),
        memo_(memo) {}

  int Run(int start, regexpr_registers *registers);

 private:
  // Position.
  void MoveTo(int offset);
  unsigned char const *PointerAt(int offset, int part) const {
    return text_.part[part] + (part == 0 ? offset : offset - text_.size[0]);
  }
  int Offset() const { return part_ == 0 ? int(pos_ - text_.part[0]) : text_.size[0] + int(pos_ - text_.part[1]); }
  bool AtTextStart() const { return part_ == 0 && pos_ == text_.part[0]; }
  bool AtTextEnd() const { return pos_ == partEnd_ && (part_ == 1 || !text_.twoParts); }
  bool AtFirstPartEnd() const { return part_ == 0 && pos_ == partEnd_ && text_.twoParts; }
  unsigned char ByteAt() const { return pos_ < partEnd_ ? *pos_ : text_.part[1][0]; }
  unsigned char ByteBefore() const { return pos_ > text_.part[part_] ? pos_[-1] : text_.part[0][text_.size[0] - 1]; }
  bool IsWord(unsigned char c) const { return word_[c] != 0; }
  bool Fetch(unsigned *c);

  // Instructions.
  Outcome Arrive(unsigned char const *code, FailureStack &stack);
  Outcome Step(unsigned char const *&code, FailureStack &stack);
  bool Push(FailureStack &stack, unsigned char const *text, unsigned char const *code);
  void UpdateTop(FailureStack &stack, int offset, int part);
  void SetSlot(int slot, int value);
  Outcome JumpOutcome(unsigned char const *&code);
  bool JumpTargetOf(unsigned char const *code, unsigned char const **target) const;
  Outcome BranchEnter(unsigned char const *&code, FailureStack &stack);
  bool Backref(unsigned n);
  bool WordStart() const;
  bool WordEnd() const;
  bool WordEdgeInterior() const { return IsWord(ByteBefore()) != IsWord(ByteAt()); }
  bool Spend() {
    if (--work_->left >= 0) return true;
    work_->ranOut = true;
    return false;
  }
  int Succeed(int start, regexpr_registers *registers) const;

  regexpr_buffer *buffer_;
  unsigned char *program_;
  int used_;
  unsigned char const *translate_;
  unsigned char const *word_;
  bool foldCase_;
  RegexprText const &text_;
  RegexprWork *work_;
  RegexprMemo *memo_;
  unsigned char const *pos_ = nullptr;
  unsigned char const *partEnd_ = nullptr;
  int part_ = 0;
  int groupStart_[REGEXPR_REGISTERS];
  int groupEnd_[REGEXPR_REGISTERS];
};

// An offset at the boundary of the parts stands at the end of the first
// part, as if the first part had just been read.
void Matcher::MoveTo(int offset) {
  part_ = offset <= text_.size[0] ? 0 : 1;
  pos_ = text_.part[part_] + (part_ == 0 ? offset : offset - text_.size[0]);
  partEnd_ = text_.part[part_] + text_.size[part_];
}

bool Matcher::Fetch(unsigned *c) {
  if (pos_ == partEnd_) {
    if (part_ == 1 || !text_.twoParts) return false;
    part_ = 1;
    pos_ = text_.part[1];
    partEnd_ = pos_ + text_.size[1];
  }
  *c = translate_ ? translate_[*pos_++] : *pos_++;
  return true;
}

int Matcher::Run(int start, regexpr_registers *registers) {
  MoveTo(start);
  if (buffer_->has_groups) {
    for (int i = 0; i < REGEXPR_REGISTERS; ++i) groupStart_[i] = groupEnd_[i] = -1;
  }
  FailureStack stack;
  unsigned char const *code = program_;
  for (;;) {
    if (!Spend()) return -2;
    Outcome outcome = memo_ && memo_->IsJoin(int(code - program_)) ? Arrive(code, stack) : Outcome::kNext;
    if (outcome == Outcome::kNext) outcome = Step(code, stack);
    switch (outcome) {
      case Outcome::kNext:
        continue;
      case Outcome::kMatched:
        return Succeed(start, registers);
      case Outcome::kExhausted:
        return -2;
      case Outcome::kFail:
        break;
    }
    BacktrackEntry entry;
    int const landed = stack.Pop(&entry);
    if (memo_) memo_->Unwind(landed);
    if (landed < 0) return -1;
    part_ = entry.part;
    pos_ = entry.text;
    partEnd_ = text_.part[part_] + text_.size[part_];
    code = entry.code;
  }
}

// At a join offset: when the memo knows this state fails, does what its
// first visit did (registers, the entry under it, how high the stack rose)
// and fails, instead of visiting it again.
Outcome Matcher::Arrive(unsigned char const *code, FailureStack &stack) {
  RegexprFailure failure;
  int const height = stack.Height();
  switch (memo_->Arrive(int(code - program_), Offset(), height, &failure)) {
    case RegexprMemo::State::kNew: return Outcome::kNext;
    case RegexprMemo::State::kGoingOn: return Outcome::kExhausted;  // it would go round until the stack overflows
    case RegexprMemo::State::kFailed: break;
  }
  if (!stack.Reserve(height + failure.rise)) return Outcome::kExhausted;
  memo_->NoteHeight(height + failure.rise);
  int const *value = failure.values;
  for (int slot = 0; slot < kRegexprSlots; ++slot) {
    if (failure.slots >> slot & 1) SetSlot(slot, *value++);
  }
  if (failure.topOffset >= 0) UpdateTop(stack, failure.topOffset, failure.topPart);
  return Outcome::kFail;
}

bool Matcher::Push(FailureStack &stack, unsigned char const *text, unsigned char const *code) {
  if (!stack.Push(text, part_, code)) return false;
  if (memo_) memo_->NotePush(stack.Height());
  return true;
}

// The loop's own entry moves along to the present position.
void Matcher::UpdateTop(FailureStack &stack, int offset, int part) {
  BacktrackEntry *top = stack.Top();
  if (!top) {
    if (memo_) memo_->Break();
    return;
  }
  *top = BacktrackEntry{PointerAt(offset, part), part, top->code};
  if (memo_) memo_->NoteTopWrite(stack.Height() - 1, offset, part);
}

void Matcher::SetSlot(int slot, int value) {
  (slot < REGEXPR_REGISTERS ? groupStart_[slot] : groupEnd_[slot - REGEXPR_REGISTERS]) = value;
  if (memo_) memo_->NoteRegister(slot, value);
}

bool Matcher::JumpTargetOf(unsigned char const *code, unsigned char const **target) const {
  int const at = JumpTarget(program_, int(code - program_));
  if (at < 0 || at > used_) return false;  // only a damaged program jumps outside itself
  *target = program_ + at;
  return true;
}

// Pushes a dummy entry whose code is where the following op_branch leads,
// so that op_branch_update at the end of the first round has an entry to
// turn into the loop's exit.
Outcome Matcher::BranchEnter(unsigned char const *&code, FailureStack &stack) {
  unsigned char const *branch = code + 3;
  unsigned char const *exit = nullptr;
  if (branch + 3 > program_ + used_ || *branch != op_branch || !JumpTargetOf(branch, &exit)) return Outcome::kFail;
  if (!Push(stack, nullptr, exit)) return Outcome::kExhausted;
  return JumpOutcome(code);
}

bool Matcher::Backref(unsigned n) {
  if (n >= REGEXPR_REGISTERS || groupEnd_[n] < 0 || groupStart_[n] < 0) return false;
  // A start left behind its end by backtracking counts as an empty register.
  for (int offset = groupStart_[n]; offset < groupEnd_[n]; ++offset) {
    unsigned c;
    if (!Fetch(&c)) return false;
    unsigned char const r = text_.ByteAt(offset);
    if (c != (translate_ ? translate_[r] : r)) return false;
  }
  return true;
}

// At the end of the first part, with a second part present, the byte "at"
// the position is taken from the start of the first part. The edge tests
// take the second part's first byte there. The asymmetry is deliberate.
bool Matcher::WordStart() const {
  if (AtTextEnd()) return false;
  unsigned char const at = AtFirstPartEnd() ? text_.part[0][0] : ByteAt();
  return IsWord(at) && (AtTextStart() || !IsWord(ByteBefore()));
}

bool Matcher::WordEnd() const {
  if (AtTextStart()) return false;
  return IsWord(ByteBefore()) && (AtTextEnd() || !IsWord(ByteAt()));
}

int Matcher::Succeed(int start, regexpr_registers *registers) const {
  int const end = Offset();
  if (registers) {
    registers->start[0] = start;
    registers->end[0] = end;
    for (int i = 1; i < REGEXPR_REGISTERS; ++i) {
      bool const set = buffer_->has_groups && groupEnd_[i] >= 0;
      registers->start[i] = set ? groupStart_[i] : -1;
      registers->end[i] = set ? groupEnd_[i] : -1;
    }
  }
  return end - start;
}

Outcome Matcher::JumpOutcome(unsigned char const *&code) {
  return JumpTargetOf(code, &code) ? Outcome::kNext : Outcome::kFail;
}

Outcome Matcher::Step(unsigned char const *&code, FailureStack &stack) {
  // Only a failed compile leaves a program without op_end; running off its
  // end fails like any other mismatch.
  if (code >= program_ + used_) return Outcome::kFail;
  unsigned const op = code[0];
  // Every offset the matcher reaches holds an opcode that the compiler wrote,
  // so an unknown opcode cannot occur.
  if (op >= kOpcodeCount) std::abort();
  if (kInstructionSize[op] > program_ + used_ - code) return Outcome::kFail;
  unsigned c = 0;
  bool ok = true;
  switch (op) {
    case op_end: return Outcome::kMatched;
    case op_line_start: ok = AtTextStart() || ByteBefore() == '\n'; break;
    case op_line_end: ok = AtTextEnd() || ByteAt() == '\n'; break;
    case op_set: ok = Fetch(&c) && SetHas(code + 1, c); break;
    case op_char: ok = Fetch(&c) && (foldCase_ ? FoldCase(static_cast<unsigned char>(c)) : c) == code[1]; break;
    case op_any: ok = Fetch(&c) && c != '\n'; break;
    case op_group_open: if (code[1] < REGEXPR_REGISTERS) SetSlot(code[1], Offset()); break;
    case op_group_close: if (code[1] < REGEXPR_REGISTERS) SetSlot(REGEXPR_REGISTERS + code[1], Offset()); break;
    case op_backref: ok = Backref(code[1]); break;
    case op_jump: return JumpOutcome(code);
    case star_jump:
      RewriteStarJump(program_, used_, int(code - program_), foldCase_);
      return Step(code, stack);  // runs as the instruction it became
    case op_branch: {
      unsigned char const *target = nullptr;
      if (!JumpTargetOf(code, &target)) return Outcome::kFail;
      if (!Push(stack, pos_, target)) return Outcome::kExhausted;
      break;
    }
    case op_branch_update:
      // The top entry is the loop's own: its operand pushes nothing.
      UpdateTop(stack, Offset(), part_);
      return JumpOutcome(code);
    case op_branch_enter: return BranchEnter(code, stack);
    case op_text_start: ok = AtTextStart(); break;
    case op_text_end: ok = AtTextEnd(); break;
    case op_word_start: ok = WordStart(); break;
    case op_word_end: ok = WordEnd(); break;
    case op_word_edge: ok = AtTextStart() || AtTextEnd() || WordEdgeInterior(); break;
    // The interior test is op_word_edge's, not its opposite: the two differ
    // only at the ends of the text. Deliberate.
    case op_not_word_edge: ok = !AtTextStart() && !AtTextEnd() && WordEdgeInterior(); break;
    case op_word_char: ok = Fetch(&c) && word_[c] == code[1]; break;
    case op_not_word_char: ok = Fetch(&c) && word_[c] != code[1]; break;
  }
  if (!ok) return Outcome::kFail;
  code += kInstructionSize[op];
  return Outcome::kNext;
}

}  // namespace

namespace znutil::detail {

bool MakeRegexprText(char const *part1, int size1, char const *part2, int size2, int stop, RegexprText *text) {
  if (size1 < 0 || size2 < 0 || stop < 0 || (!part1 && size1 > 0) || (!part2 && size2 > 0)) return false;
  static unsigned char const kEmpty[1] = {0};
  auto const *first = part1 ? reinterpret_cast<unsigned char const *>(part1) : kEmpty;
  auto const *second = reinterpret_cast<unsigned char const *>(part2);
  std::int64_t const total = std::int64_t{size1} + size2;
  if (stop > total) stop = static_cast<int>(total);
  if (stop <= size1) {
    *text = RegexprText{{first, nullptr}, {stop, 0}, false, stop};
  } else if (size1 == 0) {
    *text = RegexprText{{second, nullptr}, {stop, 0}, false, stop};  // the second part alone
  } else {
    *text = RegexprText{{first, second}, {size1, stop - size1}, true, stop};
  }
  return true;
}

// Quadratic in the text, so that a search that tries every start and scans
// to the end from each (a*c over a long run of a) still completes; only
// exponential work runs out, and late.
// About what setting the memo up costs: a search that needs more work than
// this loses little by starting again with the memo, and most need less.
std::int64_t RegexprTrialAllowance(RegexprText const &text, int programSize) {
  return 256 + std::int64_t{8} * (std::int64_t{text.total} + programSize);
}

std::int64_t RegexprWorkBudget(RegexprText const &text, int programSize) {
  double const positions = double(text.total) + 1;
  double const budget = double(1 << 22) + positions * positions * (double(programSize) + 1);
  return budget < 0x1p62 ? static_cast<std::int64_t>(budget) : std::int64_t{1} << 62;
}

int RegexprMatchAt(regexpr_buffer *buffer, RegexprText const &text, int start, regexpr_registers *registers,
                   RegexprWork *work, RegexprMemo *memo) {
  if (start < 0 || start > text.total || !buffer->buffer) return -1;
  return Matcher(buffer, text, work, memo).Run(start, registers);
}

}  // namespace znutil::detail

namespace {

int MatchParts(regexpr_buffer *buffer, char const *part1, int size1, char const *part2, int size2, int start,
               regexpr_registers *registers, int stop, RegexprMemoUse use, RegexprWork *work) {
  RegexprText text;
  if (!MakeRegexprText(part1, size1, part2, size2, stop, &text)) return -1;
  RegexprWork standard{RegexprWorkBudget(text, buffer->used), false};  // unless the caller sets one
  return RegexprWithMemo(buffer, text, use, work ? work : &standard, [&](RegexprWork *spend, RegexprMemo *memo) {
    return RegexprMatchAt(buffer, text, start, registers, spend, memo);
  });
}

}  // namespace

int znutil::detail::RegexprMatchUsingMemo(regexpr_buffer *buffer, char const *part1, int size1, char const *part2,
                                          int size2, int start, regexpr_registers *registers, int stop, bool memo,
                                          std::int64_t work, bool *ranOut) {
  RegexprMemoUse const use = memo ? RegexprMemoUse::kAlways : RegexprMemoUse::kNever;
  RegexprWork spent{work, false};
  int const result = MatchParts(buffer, part1, size1, part2, size2, start, registers, stop, use, &spent);
  *ranOut = spent.ranOut;
  return result;
}

int regexpr_match_parts(regexpr_buffer *buffer, char const *part1, int size1, char const *part2, int size2, int start,
                        regexpr_registers *registers, int stop) {
  return MatchParts(buffer, part1, size1, part2, size2, start, registers, stop, RegexprMemoUse::kAdaptive, nullptr);
}

int regexpr_match(regexpr_buffer *buffer, char const *text, int size, int start, regexpr_registers *registers) {
  return regexpr_match_parts(buffer, text, size, nullptr, 0, start, registers, size);
}
