// ZnHashTableContext: the walk state of a ZnHashTable context: the bucket,
// the cell within it, and the chain node when the walk is in the chain.
#ifndef ZNUTIL_CONTAINERS_INTERNAL_ZNHASHTABLECONTEXT_H
#define ZNUTIL_CONTAINERS_INTERNAL_ZNHASHTABLECONTEXT_H

#include <znutil/containers/ZnHashTable.h>
#include <znutil/containers/ZnListContextData.h>

namespace znutil::detail {

class ZnHashTableContext : public ZnListContextData {
 public:
  int iBucket = 0;
  int iSlot = 0;
  ZnHashTable::ZnChainNode *pNode = nullptr;  ///< null while in the cells
};

}  // namespace znutil::detail

#endif  // ZNUTIL_CONTAINERS_INTERNAL_ZNHASHTABLECONTEXT_H
