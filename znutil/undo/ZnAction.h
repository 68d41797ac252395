// ZnAction: a command that the undo history runs, takes back and names.
//
//   class RenameAction : public ZnAction {
//    public:
//     bool Execute() override { ...; return true; }
//     bool Revert() override { ...; return true; }
//     ZnString const &Label() override { return fsLabel; }
//   };
//
// Actions come from ZnFixedBlockAllocator through the class operator new;
// an action handed to ZnActionManager belongs to it from then on.
#ifndef ZNUTIL_UNDO_ZNACTION_H
#define ZNUTIL_UNDO_ZNACTION_H

#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnAction {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  ZnAction() {}
  /// An action carries no data of its own: copies copy nothing.
  ZnAction(ZnAction const &) {}
  ZnAction &operator=(ZnAction const &) { return *this; }
  virtual ~ZnAction();

  /// Performs the action, or performs it again after Revert; true on success.
  virtual bool Execute() = 0;
  /// Takes the action back. The history does not look at the result.
  virtual bool Revert() = 0;
  /// The action's name, for a menu.
  virtual ZnString const &Label() = 0;
};

#endif  // ZNUTIL_UNDO_ZNACTION_H
