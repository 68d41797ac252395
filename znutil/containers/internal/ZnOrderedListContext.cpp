#include <znutil/containers/internal/ZnOrderedListContext.h>

#include <znutil/memory/ZnFixedBlockAllocator.h>

namespace znutil::detail {

namespace {

ZnAVLTreeNode *SpineEnd(ZnAVLTreeNode *node, int side) {
  while (node != nullptr && node->pChild[side] != nullptr) node = node->pChild[side];
  return node;
}

}  // namespace

ZnOrderedListContext::~ZnOrderedListContext() {
  while (pPath != nullptr) Pop();
}

void ZnOrderedListContext::Push(ZnAVLTreeNode *node) {
  auto *record = static_cast<PathRecord *>(ZnFixedBlockAllocator::Alloc(sizeof(PathRecord)));
  record->pNode = node;
  record->pNext = pPath;
  pPath = record;
}

void ZnOrderedListContext::PushSpine(ZnAVLTreeNode *node, int side) {
  for (; node != nullptr; node = node->pChild[side]) Push(node);
}

ZnAVLTreeNode *ZnOrderedListContext::Pop() {
  PathRecord *const record = pPath;
  if (record == nullptr) return nullptr;
  pPath = record->pNext;
  ZnAVLTreeNode *const node = record->pNode;
  ZnFixedBlockAllocator::Free(record);
  return node;
}

void ZnOrderedListContext::NoteEnds(ZnAVLTreeNode *root) {
  pFirst = SpineEnd(root, kLeft);
  pLast = SpineEnd(root, kRight);
}

}  // namespace znutil::detail
