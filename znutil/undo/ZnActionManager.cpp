#include <znutil/undo/ZnActionManager.h>

#include <memory>

#include <znutil/containers/ZnListContext.h>

// The stack.

void ZnActionManager::ZnActionStack::Push(ZnAction *action) {
  // The owning list destroys the action it deletes.
  if (GetCount() > kPushLimit) DeleteLast();
  Prepend(action);
}

ZnAction *ZnActionManager::ZnActionStack::Peek() {
  ZnListContext context;
  return First(context);
}

ZnAction *ZnActionManager::ZnActionStack::Pop() {
  RevokeOwnership();
  auto *action = static_cast<ZnAction *>(DeleteFirst());
  TakeOwnership();
  return action;
}

void ZnActionManager::ZnActionStack::DestroyAll() {
  while (GetCount() > 0) DeleteFirst();
}

// The history.

ZnActionManager::~ZnActionManager() { Clear(); }

bool ZnActionManager::Do(ZnAction *action) {
  if (action == nullptr) return false;
  // The history owns the action from here on, even when Execute fails or
  // throws.
  std::unique_ptr<ZnAction> owned(action);
  if (!owned->Execute()) return false;
  Add(owned.release());
  return true;
}

void ZnActionManager::Add(ZnAction *action) {
  if (action == nullptr) return;
  asUndo.Push(action);
  asRedo.DestroyAll();
}

ZnAction *ZnActionManager::Move(ZnActionStack &from, ZnActionStack &to, bool (ZnAction::*step)()) {
  std::unique_ptr<ZnAction> action(from.Pop());
  if (action == nullptr) return nullptr;
  (action.get()->*step)();  // the result is ignored: the action moves anyway
  to.Push(action.get());
  return action.release();
}

ZnAction *ZnActionManager::Undo() { return Move(asUndo, asRedo, &ZnAction::Revert); }

ZnAction *ZnActionManager::Redo() { return Move(asRedo, asUndo, &ZnAction::Execute); }

bool ZnActionManager::LabelOf(ZnActionStack &stack, ZnString &label) {
  ZnAction *const top = stack.Peek();
  if (top == nullptr) return false;
  label = top->Label();
  return true;
}

bool ZnActionManager::UndoLabel(ZnString &label) { return LabelOf(asUndo, label); }

bool ZnActionManager::RedoLabel(ZnString &label) { return LabelOf(asRedo, label); }

void ZnActionManager::Clear() {
  asUndo.DestroyAll();
  asRedo.DestroyAll();
}
