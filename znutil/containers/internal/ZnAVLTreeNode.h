// The node of ZnOrderedList's AVL tree, and the path records of its walks.
#ifndef ZNUTIL_CONTAINERS_INTERNAL_ZNAVLTREENODE_H
#define ZNUTIL_CONTAINERS_INTERNAL_ZNAVLTREENODE_H

/// A tree node, from ZnFixedBlockAllocator. The two children sit in an array,
/// left first, so that each rotation and rebalancing step is written once
/// for a side and its mirror image.
struct ZnAVLTreeNode {
  ZnAVLTreeNode *pChild[2];
  short sBalance;  ///< height of right minus height of left: -1, 0 or 1 at rest
  void *pItem;
};

namespace znutil::detail {

constexpr int kLeft = 0;
constexpr int kRight = 1;

/// -1 for the left side and +1 for the right: what a taller subtree on that
/// side adds to its parent's balance.
inline int SideSign(int side) { return side == kLeft ? -1 : 1; }

}  // namespace znutil::detail

#endif  // ZNUTIL_CONTAINERS_INTERNAL_ZNAVLTREENODE_H
