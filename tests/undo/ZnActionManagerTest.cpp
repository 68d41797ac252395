#include <znutil/undo/ZnActionManager.h>

#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// What the test actions did, in order: "+id" execute, "-id" revert,
// "~id" destroyed.
struct Journal {
  std::vector<std::string> events;
  int live = 0;
  std::string Last() const { return events.empty() ? "" : events.back(); }
};

class TestAction : public ZnAction {
 public:
  enum Fault { kNone, kFailExecute, kFailSecondExecute, kThrowExecute, kThrowRevert };

  TestAction(Journal &journal, int id, Fault fault = kNone)
      : journal_(journal), id_(id), fault_(fault), label_(("action " + std::to_string(id)).c_str()) {
    ++journal_.live;
  }
  ~TestAction() override {
    --journal_.live;
    Log("~");
  }

  bool Execute() override {
    Log("+");
    if (fault_ == kThrowExecute) throw std::runtime_error("execute");
    ++executions_;
    return !(fault_ == kFailExecute || (fault_ == kFailSecondExecute && executions_ == 2));
  }
  bool Revert() override {
    Log("-");
    if (fault_ == kThrowRevert) throw std::runtime_error("revert");
    return false;  // ignored by the history
  }
  ZnString const &Label() override { return label_; }

 private:
  void Log(char const *what) { journal_.events.push_back(what + std::to_string(id_)); }

  Journal &journal_;
  int id_;
  Fault fault_;
  int executions_ = 0;
  ZnString label_;
};

std::string Text(ZnString const &text) { return static_cast<char const *>(text); }

TEST(ZnActionManagerTest, DoRunsAndKeepsSuccessesAndDestroysFailures) {
  Journal journal;
  ZnActionManager history;
  EXPECT_FALSE(history.Do(nullptr));
  EXPECT_TRUE(history.Do(new TestAction(journal, 1)));
  EXPECT_EQ(journal.Last(), "+1");
  EXPECT_FALSE(history.Do(new TestAction(journal, 2, TestAction::kFailExecute)));
  EXPECT_EQ(journal.events, (std::vector<std::string>{"+1", "+2", "~2"}));
  EXPECT_EQ(history.UndoSize(), 1);
  EXPECT_EQ(history.RedoSize(), 0);
  EXPECT_EQ(journal.live, 1);
}

TEST(ZnActionManagerTest, StacksHoldAtMostFortyOneActions) {
  Journal journal;
  ZnActionManager history;
  for (int id = 1; id <= 41; ++id) history.Do(new TestAction(journal, id));
  EXPECT_EQ(history.UndoSize(), 41);
  EXPECT_EQ(journal.live, 41);
  history.Do(new TestAction(journal, 42));
  EXPECT_EQ(history.UndoSize(), 41);
  EXPECT_EQ(journal.live, 41);
  EXPECT_EQ(journal.Last(), "~1");  // the oldest goes
  history.Add(new TestAction(journal, 43));
  EXPECT_EQ(journal.Last(), "~2");
  while (history.Undo() != nullptr) {
  }
  EXPECT_EQ(history.RedoSize(), 41);
  EXPECT_EQ(history.UndoSize(), 0);
}

TEST(ZnActionManagerTest, UndoAndRedoMoveTheTopBetweenTheStacks) {
  Journal journal;
  ZnActionManager history;
  EXPECT_EQ(history.Undo(), nullptr);
  EXPECT_EQ(history.Redo(), nullptr);
  auto *first = new TestAction(journal, 1);
  auto *second = new TestAction(journal, 2);
  history.Do(first);
  history.Do(second);

  EXPECT_EQ(history.Undo(), second);
  EXPECT_EQ(journal.Last(), "-2");
  EXPECT_EQ(history.Undo(), first);
  EXPECT_EQ(history.Undo(), nullptr);
  EXPECT_EQ(history.RedoSize(), 2);
  EXPECT_EQ(history.Redo(), first);
  EXPECT_EQ(journal.Last(), "+1");
  EXPECT_EQ(history.UndoSize(), 1);
  EXPECT_EQ(history.RedoSize(), 1);  // Redo keeps the rest for more redoing
  EXPECT_EQ(history.Redo(), second);
  EXPECT_EQ(history.Redo(), nullptr);
  EXPECT_EQ(journal.live, 2);
}

TEST(ZnActionManagerTest, RedoKeepsAnActionWhoseExecuteFails) {
  Journal journal;
  ZnActionManager history;
  history.Do(new TestAction(journal, 1, TestAction::kFailSecondExecute));
  history.Undo();
  ASSERT_NE(history.Redo(), nullptr);
  EXPECT_EQ(history.UndoSize(), 1);
  EXPECT_EQ(journal.live, 1);
}

TEST(ZnActionManagerTest, DoAndAddDestroyWhatCouldBeRedone) {
  Journal journal;
  ZnActionManager history;
  history.Do(new TestAction(journal, 1));
  history.Do(new TestAction(journal, 2));
  history.Undo();
  history.Do(new TestAction(journal, 3));
  EXPECT_EQ(journal.Last(), "~2");
  EXPECT_EQ(history.RedoSize(), 0);
  history.Undo();
  history.Add(new TestAction(journal, 4));
  EXPECT_EQ(journal.Last(), "~3");  // Add runs nothing
  history.Add(nullptr);
  EXPECT_EQ(history.UndoSize(), 2);
  EXPECT_EQ(journal.live, 2);
}

TEST(ZnActionManagerTest, LabelsNameTheTopsOrLeaveTheArgument) {
  Journal journal;
  ZnActionManager history;
  ZnString label("untouched");
  EXPECT_FALSE(history.UndoLabel(label));
  EXPECT_FALSE(history.RedoLabel(label));
  EXPECT_EQ(Text(label), "untouched");
  history.Do(new TestAction(journal, 1));
  history.Do(new TestAction(journal, 2));
  EXPECT_TRUE(history.UndoLabel(label));
  EXPECT_EQ(Text(label), "action 2");
  history.Undo();
  EXPECT_TRUE(history.RedoLabel(label));
  EXPECT_EQ(Text(label), "action 2");
  EXPECT_TRUE(history.UndoLabel(label));
  EXPECT_EQ(Text(label), "action 1");
}

TEST(ZnActionManagerTest, ClearAndDestructionDestroyEveryAction) {
  Journal journal;
  {
    ZnActionManager history;
    for (int id = 1; id <= 5; ++id) history.Do(new TestAction(journal, id));
    history.Undo();
    history.Undo();
    history.Clear();
    EXPECT_EQ(journal.live, 0);
    EXPECT_EQ(history.UndoSize() + history.RedoSize(), 0);
    for (int id = 6; id <= 8; ++id) history.Do(new TestAction(journal, id));
    history.Undo();
  }
  EXPECT_EQ(journal.live, 0);
}

TEST(ZnActionManagerTest, ExceptionsFromActionsPassThroughAndLoseTheAction) {
  Journal journal;
  ZnActionManager history;
  EXPECT_THROW(history.Do(new TestAction(journal, 1, TestAction::kThrowExecute)), std::runtime_error);
  EXPECT_EQ(journal.live, 0);
  EXPECT_EQ(history.UndoSize(), 0);
  history.Do(new TestAction(journal, 2, TestAction::kThrowRevert));
  EXPECT_THROW(history.Undo(), std::runtime_error);
  EXPECT_EQ(journal.live, 0);
  EXPECT_EQ(history.UndoSize() + history.RedoSize(), 0);
}

}  // namespace
