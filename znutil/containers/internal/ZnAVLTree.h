// The recursive algorithms of ZnOrderedList's AVL tree, on a link to a
// subtree. ZnOrderedList keeps the root and the count.
#ifndef ZNUTIL_CONTAINERS_INTERNAL_ZNAVLTREE_H
#define ZNUTIL_CONTAINERS_INTERNAL_ZNAVLTREE_H

#include <znutil/containers/ZnListItemCompare.h>
#include <znutil/containers/ZnListItemDestroy.h>
#include <znutil/containers/ZnListItemIterate.h>
#include <znutil/containers/internal/ZnAVLTreeNode.h>

namespace znutil::detail {

/// What a change does with an equal item: the order, whether an add may
/// replace, and who destroys what is replaced or deleted (may be null).
struct ZnAVLChange {
  ZnListItemCompare &compare;
  ZnListItemDestroy *destroyer;
  bool replace;
};

/// What AddLeaf did.
enum class ZnAVLAdded { kNewNode, kReplaced, kRefused };

/// Inserts item below link; grew tells the caller that the subtree at link
/// became taller. Rebalances on the way back up.
ZnAVLAdded AddLeaf(ZnAVLTreeNode *&link, void *item, bool &grew, ZnAVLChange const &change);
/// Unlinks the node equal to item below link and returns it (its item
/// destroyed if there is a destroyer), or null when there is none. A node
/// with two children takes its in-order predecessor's item, and the
/// predecessor's node is the one returned. shrunk tells the caller that the
/// subtree at link became shorter.
ZnAVLTreeNode *DeleteNode(ZnAVLTreeNode *&link, void *item, bool &shrunk, ZnAVLChange const &change);
/// Frees every node below and at node, subtrees first, handing each item to
/// destroyer (may be null) after its subtrees.
void FreeSubtree(ZnAVLTreeNode *node, ZnListItemDestroy *destroyer);
/// In-order visit; false when the iterator stopped the walk.
bool IterateSubtree(ZnAVLTreeNode const *node, ZnListItemIterate &iterator, void *data, int &index);
/// The height of the subtree, 0 when empty.
int SubtreeHeight(ZnAVLTreeNode const *node);
/// The height of the subtree, or -1 if a stored balance anywhere in it is wrong.
int VerifiedHeight(ZnAVLTreeNode const *node);

}  // namespace znutil::detail

#endif  // ZNUTIL_CONTAINERS_INTERNAL_ZNAVLTREE_H
