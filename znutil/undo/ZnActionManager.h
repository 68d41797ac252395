// ZnActionManager: a bounded undo and redo history of ZnAction commands.
//
//   ZnActionManager history;
//   history.Do(new RenameAction(...));   // runs it; the history owns it
//   history.Undo();                      // reverts it, keeps it for Redo
//   ZnString label;
//   if (history.RedoLabel(label)) ...    // "Rename"
//
// Each stack holds at most 41 actions: a push onto a stack of more than 40
// first destroys the oldest. Do and Add clear the redo stack; Undo and Redo
// move an action from one stack to the other. Redo puts an action back on
// the undo stack even when its Execute fails, where Do destroys an action
// that fails: that asymmetry is deliberate. No locks: one thread at a time.
#ifndef ZNUTIL_UNDO_ZNACTIONMANAGER_H
#define ZNUTIL_UNDO_ZNACTIONMANAGER_H

#include <znutil/containers/ZnTDblList.h>
#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>
#include <znutil/undo/ZnAction.h>

class ZNUTIL_API ZnActionManager {
 public:
  /// A stack of actions over an owning list whose first item is the top.
  class ZNUTIL_API ZnActionStack : public ZnTDblList<ZnAction> {
   public:
    /// A push onto a stack holding more than this many actions first
    /// destroys the oldest, so a stack holds at most one more.
    static constexpr int kPushLimit = 40;

    ZnActionStack() : ZnTDblList<ZnAction>(true) {}

    /// Applies the limit, then puts `action` on top; the stack owns it.
    void Push(ZnAction *action);
    /// The top, or null; it stays on the stack.
    ZnAction *Peek();
    /// Takes the top off alive, or null; the caller owns it.
    ZnAction *Pop();
    /// Destroys every action, the top first.
    void DestroyAll();
  };

  ZnActionManager() {}
  ZnActionManager(ZnActionManager const &) = delete;
  ZnActionManager &operator=(ZnActionManager const &) = delete;
  /// Destroys both stacks with their actions.
  virtual ~ZnActionManager();

  /// Runs `action`, which the history owns from this call on. On success it
  /// goes on the undo stack and the redo stack is destroyed; on failure it
  /// is destroyed and the history is unchanged. False for null.
  bool Do(ZnAction *action);
  /// Records an action that the caller has performed, as Do does on
  /// success, without running it. Null is ignored.
  void Add(ZnAction *action);
  /// Reverts the top of the undo stack and moves it to the redo stack; null
  /// when there is nothing to undo. The action stays the history's.
  ZnAction *Undo();
  /// Executes the top of the redo stack again and moves it to the undo
  /// stack whatever Execute says; null when there is nothing to redo.
  ZnAction *Redo();
  /// The label of what Undo would revert; false, leaving `label`, if none.
  bool UndoLabel(ZnString &label);
  bool RedoLabel(ZnString &label);
  int UndoSize() { return asUndo.GetCount(); }
  int RedoSize() { return asRedo.GetCount(); }
  /// Destroys every action, the undo stack first.
  void Clear();

 private:
  static bool LabelOf(ZnActionStack &stack, ZnString &label);
  /// Pops `from`, runs `step` on the action and pushes it onto `to`. An
  /// exception from `step` destroys the action, which is then lost to the
  /// history.
  static ZnAction *Move(ZnActionStack &from, ZnActionStack &to, bool (ZnAction::*step)());

  ZnActionStack asUndo;
  ZnActionStack asRedo;
};

#endif  // ZNUTIL_UNDO_ZNACTIONMANAGER_H
