// ZnOrderedListContext: the walk state of a ZnOrderedList context.
//
// The tree has no parent pointers, so a walk keeps its own path: a stack of
// records from ZnFixedBlockAllocator whose top is the current node and whose
// records beneath are its ancestors, up to the root. The two ends of the
// tree are noted when the walk begins, so that GetNext and GetPrev know
// where to stop.
#ifndef ZNUTIL_CONTAINERS_INTERNAL_ZNORDEREDLISTCONTEXT_H
#define ZNUTIL_CONTAINERS_INTERNAL_ZNORDEREDLISTCONTEXT_H

#include <znutil/containers/ZnListContextData.h>
#include <znutil/containers/internal/ZnAVLTreeNode.h>

namespace znutil::detail {

class ZnOrderedListContext : public ZnListContextData {
 public:
  ZnOrderedListContext() : pPath(nullptr), pFirst(nullptr), pLast(nullptr) {}
  ZnOrderedListContext(ZnOrderedListContext const &) = delete;
  ZnOrderedListContext &operator=(ZnOrderedListContext const &) = delete;
  /// Frees every path record.
  ~ZnOrderedListContext() override;

  void Push(ZnAVLTreeNode *node);
  /// Pushes node and then its children on side down to the end of that spine.
  void PushSpine(ZnAVLTreeNode *node, int side);
  /// Pops the top node; null when the path is empty.
  ZnAVLTreeNode *Pop();
  /// The current node, or null.
  ZnAVLTreeNode *Top() const { return pPath != nullptr ? pPath->pNode : nullptr; }
  /// Notes the leftmost and rightmost nodes of the tree rooted at root.
  void NoteEnds(ZnAVLTreeNode *root);
  /// The leftmost node for kLeft, the rightmost for kRight.
  ZnAVLTreeNode *End(int side) const { return side == kLeft ? pFirst : pLast; }

 private:
  struct PathRecord {
    ZnAVLTreeNode *pNode;
    PathRecord *pNext;
  };

  PathRecord *pPath;
  ZnAVLTreeNode *pFirst;
  ZnAVLTreeNode *pLast;
};

}  // namespace znutil::detail

#endif  // ZNUTIL_CONTAINERS_INTERNAL_ZNORDEREDLISTCONTEXT_H
