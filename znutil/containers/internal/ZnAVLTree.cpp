#include <znutil/containers/internal/ZnAVLTree.h>

#include <algorithm>

#include <znutil/memory/ZnFixedBlockAllocator.h>

namespace znutil::detail {

namespace {

using Node = ZnAVLTreeNode;

int Other(int side) { return 1 - side; }

// The child on side heavy rises into link; node goes below it on the other
// side, taking the child's inner subtree. Balances are the caller's.
void RotateSingle(Node *&link, int heavy) {
  Node *const node = link;
  Node *const child = node->pChild[heavy];
  node->pChild[heavy] = child->pChild[Other(heavy)];
  child->pChild[Other(heavy)] = node;
  link = child;
}

// The inner grandchild G rises into link, with the child and node as its
// two children and its own subtrees shared between them.
void RotateDouble(Node *&link, int heavy) {
  Node *const node = link;
  Node *const child = node->pChild[heavy];
  Node *const grand = child->pChild[Other(heavy)];
  child->pChild[Other(heavy)] = grand->pChild[heavy];
  node->pChild[heavy] = grand->pChild[Other(heavy)];
  grand->pChild[heavy] = child;
  grand->pChild[Other(heavy)] = node;
  int const sign = SideSign(heavy);
  node->sBalance = static_cast<short>(grand->sBalance == sign ? -sign : 0);
  child->sBalance = static_cast<short>(grand->sBalance == -sign ? sign : 0);
  grand->sBalance = 0;
  link = grand;
}

void SetBalances(Node *top, int heavy, int topBalance, int belowBalance) {
  top->sBalance = static_cast<short>(topBalance);
  top->pChild[Other(heavy)]->sBalance = static_cast<short>(belowBalance);
}

// The node at link is two taller on side heavy after an insertion there.
void RebalanceAfterInsert(Node *&link, int heavy) {
  if (link->pChild[heavy]->sBalance == SideSign(heavy)) {
    RotateSingle(link, heavy);
    SetBalances(link, heavy, 0, 0);
  } else {
    RotateDouble(link, heavy);
  }
}

// The subtree on side of the node at link became shorter: adjust and
// rotate; shrunk stays set while the subtree at link is shorter too.
void BalanceAfterShrink(Node *&link, int side, bool &shrunk) {
  Node *const node = link;
  node->sBalance = static_cast<short>(node->sBalance - SideSign(side));
  if (node->sBalance == -SideSign(side)) {
    shrunk = false;  // it was even before: the height did not change
    return;
  }
  if (node->sBalance == 0) return;
  int const heavy = Other(side);
  int const childBalance = node->pChild[heavy]->sBalance;
  if (childBalance == 0) {
    RotateSingle(link, heavy);
    SetBalances(link, heavy, -SideSign(heavy), SideSign(heavy));
    shrunk = false;
  } else if (childBalance == SideSign(heavy)) {
    RotateSingle(link, heavy);
    SetBalances(link, heavy, 0, 0);
  } else {
    RotateDouble(link, heavy);
  }
}

Node *NewNode(void *item) {
  auto *node = static_cast<Node *>(ZnFixedBlockAllocator::Alloc(sizeof(Node)));
  node->pChild[kLeft] = nullptr;
  node->pChild[kRight] = nullptr;
  node->sBalance = 0;
  node->pItem = item;
  return node;
}

// Removes the rightmost node below link, moving its item into target.
Node *DeleteByCopying(Node *&link, Node *target, bool &shrunk) {
  Node *const node = link;
  if (node->pChild[kRight] != nullptr) {
    Node *const freed = DeleteByCopying(node->pChild[kRight], target, shrunk);
    if (shrunk) BalanceAfterShrink(link, kRight, shrunk);
    return freed;
  }
  target->pItem = node->pItem;
  link = node->pChild[kLeft];
  shrunk = true;
  return node;
}

}  // namespace

ZnAVLAdded AddLeaf(Node *&link, void *item, bool &grew, ZnAVLChange const &change) {
  Node *const node = link;
  if (node == nullptr) {
    link = NewNode(item);
    grew = true;
    return ZnAVLAdded::kNewNode;
  }
  int const order = change.compare.CompareItems(item, node->pItem);
  if (order == 0) {
    grew = false;
    if (!change.replace) return ZnAVLAdded::kRefused;
    if (change.destroyer != nullptr) change.destroyer->DestroyItem(node->pItem);
    node->pItem = item;
    return ZnAVLAdded::kReplaced;
  }
  int const side = order < 0 ? kLeft : kRight;
  ZnAVLAdded const added = AddLeaf(node->pChild[side], item, grew, change);
  if (grew) {
    node->sBalance = static_cast<short>(node->sBalance + SideSign(side));
    if (node->sBalance == 0) {
      grew = false;
    } else if (node->sBalance == 2 * SideSign(side)) {
      RebalanceAfterInsert(link, side);
      grew = false;
    }
  }
  return added;
}

Node *DeleteNode(Node *&link, void *item, bool &shrunk, ZnAVLChange const &change) {
  Node *const node = link;
  if (node == nullptr) return nullptr;
  int const order = change.compare.CompareItems(item, node->pItem);
  if (order != 0) {
    int const side = order < 0 ? kLeft : kRight;
    Node *const freed = DeleteNode(node->pChild[side], item, shrunk, change);
    if (shrunk) BalanceAfterShrink(link, side, shrunk);
    return freed;
  }
  if (change.destroyer != nullptr) change.destroyer->DestroyItem(node->pItem);
  if (node->pChild[kLeft] == nullptr || node->pChild[kRight] == nullptr) {
    link = node->pChild[node->pChild[kLeft] == nullptr ? kRight : kLeft];
    shrunk = true;
    return node;
  }
  Node *const freed = DeleteByCopying(node->pChild[kLeft], node, shrunk);
  if (shrunk) BalanceAfterShrink(link, kLeft, shrunk);
  return freed;
}

void FreeSubtree(Node *node, ZnListItemDestroy *destroyer) {
  if (node == nullptr) return;
  FreeSubtree(node->pChild[kLeft], destroyer);
  FreeSubtree(node->pChild[kRight], destroyer);
  if (destroyer != nullptr) destroyer->DestroyItem(node->pItem);
  ZnFixedBlockAllocator::Free(node);
}

bool IterateSubtree(Node const *node, ZnListItemIterate &iterator, void *data, int &index) {
  if (node == nullptr) return true;
  return IterateSubtree(node->pChild[kLeft], iterator, data, index) &&
         iterator.IterateItem(node->pItem, data, index++) &&
         IterateSubtree(node->pChild[kRight], iterator, data, index);
}

int SubtreeHeight(Node const *node) {
  if (node == nullptr) return 0;
  return 1 + std::max(SubtreeHeight(node->pChild[kLeft]), SubtreeHeight(node->pChild[kRight]));
}

int VerifiedHeight(Node const *node) {
  if (node == nullptr) return 0;
  int const left = VerifiedHeight(node->pChild[kLeft]);
  int const right = VerifiedHeight(node->pChild[kRight]);
  if (left < 0 || right < 0 || right - left != node->sBalance) return -1;
  return 1 + std::max(left, right);
}

}  // namespace znutil::detail
