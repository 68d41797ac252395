// ZnListContextData: the shared, counted walk state that a container may
// hang on a ZnListContext.
//
// A new object starts with a count of 1, which belongs to its creator.
// Handing it to a context with SetOwnedData adds the context's own
// reference, so the creator then gives its reference back:
//
//   ZnListContextData *walk = new MyWalkState;
//   context.SetOwnedData(walk);
//   walk->Release();   // the context now holds the only reference
#ifndef ZNUTIL_CONTAINERS_ZNLISTCONTEXTDATA_H
#define ZNUTIL_CONTAINERS_ZNLISTCONTEXTDATA_H

#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>

class ZNUTIL_API ZnListContextData {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  /// Starts with a count of 1, owned by the creator.
  ZnListContextData() : iRefCount(1) {}
  /// Copies carry the count as a plain member.
  ZnListContextData(ZnListContextData const &) = default;
  ZnListContextData &operator=(ZnListContextData const &) = default;
  virtual ~ZnListContextData();

  /// Raises the count by one.
  void AddRef() { ++iRefCount; }
  /// Lowers the count, destroys the object when it reaches 0, and returns
  /// the count from before the call. The count is plain, not atomic: whoever
  /// shares a context across threads guards it.
  int Release() {
    int const before = iRefCount--;
    if (iRefCount == 0) delete this;
    return before;
  }

 private:
  int iRefCount;
};

#endif  // ZNUTIL_CONTAINERS_ZNLISTCONTEXTDATA_H
