#include <znutil/undo/ZnActionManager.h>

#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// What the test actions did, in order: "+id" execute, "-id" revert,
// "~id" destroyed; and how many are alive.
struct Journal {
  std::vector<std::string> events;
  int live = 0;
};

// An action that logs into its journal and misbehaves as `fault` says.
struct TestAction : ZnAction {
  enum Fault { kNone, kFailExecute, kFailSecondExecute, kThrowExecute, kThrowRevert };

  TestAction(Journal &journal, int id, Fault fault)
      : journal(journal), id(id), fault(fault), label(("action " + std::to_string(id)).c_str()) {
    ++journal.live;
  }
  ~TestAction() override {
    --journal.live;
    Log("~");
  }
  bool Execute() override {
    Log("+");
    if (fault == kThrowExecute) throw std::runtime_error("execute");
    return fault != kFailExecute && !(fault == kFailSecondExecute && ++runs == 2);
  }
  bool Revert() override {
    Log("-");
    if (fault == kThrowRevert) throw std::runtime_error("revert");
    return false;  // ignored by the history
  }
  ZnString const &Label() override { return label; }
  void Log(char const *what) { journal.events.push_back(what + std::to_string(id)); }

  Journal &journal;
  int id;
  Fault fault;
  int runs = 0;
  ZnString label;
};

std::string Text(ZnString const &text) { return static_cast<char const *>(text); }

class ZnActionManagerTest : public ::testing::Test {
 protected:
  TestAction *Action(int id, TestAction::Fault fault = TestAction::kNone) { return new TestAction(journal, id, fault); }

  Journal journal;  // outlives the history, whose actions log into it
  ZnActionManager history;
};

TEST_F(ZnActionManagerTest, DoAndAddKeepSuccessesAndDestroyWhatCouldBeRedone) {
  EXPECT_FALSE(history.Do(nullptr));
  EXPECT_TRUE(history.Do(Action(1)));
  EXPECT_FALSE(history.Do(Action(2, TestAction::kFailExecute)));
  EXPECT_EQ(history.UndoSize() + history.RedoSize(), 1);
  history.Undo();
  EXPECT_TRUE(history.Do(Action(3)));
  history.Undo();
  history.Add(Action(4));
  history.Add(nullptr);
  // A failed Do destroys its action; Do and Add (which runs nothing)
  // destroy what stood on the redo stack.
  EXPECT_EQ(journal.events, (std::vector<std::string>{"+1", "+2", "~2", "-1", "+3", "~1", "-3", "~3"}));
  EXPECT_EQ(history.UndoSize(), 1);
  EXPECT_EQ(history.RedoSize(), 0);
  EXPECT_EQ(journal.live, 1);
}

TEST_F(ZnActionManagerTest, StacksHoldAtMostFortyOneActions) {
  for (int id = 1; id <= 41; ++id) history.Do(Action(id));
  EXPECT_EQ(history.UndoSize(), 41);
  history.Do(Action(42));
  EXPECT_EQ(journal.events.back(), "~1");  // the oldest goes
  history.Add(Action(43));
  EXPECT_EQ(journal.events.back(), "~2");
  EXPECT_EQ(history.UndoSize(), 41);
  EXPECT_EQ(journal.live, 41);
  while (history.Undo() != nullptr) {
  }
  EXPECT_EQ(history.RedoSize(), 41);
}

// Labels name the tops, or leave the argument as it was.
TEST_F(ZnActionManagerTest, UndoAndRedoMoveTheTopBetweenTheStacks) {
  EXPECT_EQ(history.Undo(), nullptr);
  EXPECT_EQ(history.Redo(), nullptr);
  ZnString undo("untouched"), redo("untouched");
  EXPECT_FALSE(history.UndoLabel(undo) || history.RedoLabel(redo));
  EXPECT_EQ(Text(undo) + Text(redo), "untoucheduntouched");
  auto *first = Action(1, TestAction::kFailSecondExecute);
  auto *second = Action(2);
  history.Do(first);
  history.Do(second);
  EXPECT_EQ(history.Undo(), second);
  EXPECT_TRUE(history.UndoLabel(undo) && history.RedoLabel(redo));
  EXPECT_EQ(Text(undo), "action 1");
  EXPECT_EQ(Text(redo), "action 2");
  EXPECT_EQ(history.Undo(), first);
  EXPECT_EQ(history.Undo(), nullptr);
  // A Redo whose Execute fails still goes back on the undo stack, and the
  // rest stays for more redoing.
  EXPECT_EQ(history.Redo(), first);
  EXPECT_EQ(history.UndoSize(), 1);
  EXPECT_EQ(history.RedoSize(), 1);
  EXPECT_EQ(history.Redo(), second);
  EXPECT_EQ(history.Redo(), nullptr);
  EXPECT_EQ(journal.events, (std::vector<std::string>{"+1", "+2", "-2", "-1", "+1", "+2"}));
  EXPECT_EQ(journal.live, 2);
}

TEST_F(ZnActionManagerTest, ClearAndDestructionDestroyEveryAction) {
  for (int id = 1; id <= 5; ++id) history.Do(Action(id));
  history.Undo();
  history.Clear();
  EXPECT_EQ(journal.live, 0);
  EXPECT_EQ(history.UndoSize() + history.RedoSize(), 0);
  auto *other = new ZnActionManager;
  other->Do(Action(6));
  other->Do(Action(7));
  other->Undo();
  delete other;
  EXPECT_EQ(journal.live, 0);
}

TEST_F(ZnActionManagerTest, ExceptionsFromActionsPassThroughAndLoseTheAction) {
  EXPECT_THROW(history.Do(Action(1, TestAction::kThrowExecute)), std::runtime_error);
  history.Do(Action(2, TestAction::kThrowRevert));
  EXPECT_THROW(history.Undo(), std::runtime_error);
  EXPECT_EQ(journal.live, 0);
  EXPECT_EQ(history.UndoSize() + history.RedoSize(), 0);
}

}  // namespace
