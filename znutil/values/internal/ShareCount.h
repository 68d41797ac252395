// ShareCount: how many objects share one set of resources through shallow
// copies. Not part of the interface.
//
//   ZnThing(ZnThing const &other) { ShareCount::Join(other.pscShares, pscShares); }
//   ~ZnThing() { if (ShareCount::Leave(pscShares)) ReleaseResources(); }
//
// An object that was never copied has no count and is the sole owner, so
// streams that are not copied allocate nothing for it.
#ifndef ZNUTIL_VALUES_INTERNAL_SHARECOUNT_H
#define ZNUTIL_VALUES_INTERNAL_SHARECOUNT_H

#include <atomic>

namespace znutil {
namespace detail {

class ShareCount {
 public:
  /// Makes `copy` one more sharer of what `original` holds; the count is
  /// created at the first copy.
  static void Join(ShareCount *&original, ShareCount *&copy) {
    if (original == nullptr) original = new ShareCount;
    original->iCount.fetch_add(1);
    copy = original;
  }

  /// Ends the sharing of one object. True when it was the last sharer, or
  /// never shared: the caller then releases the resources.
  static bool Leave(ShareCount *&shares) {
    ShareCount *const count = shares;
    shares = nullptr;
    if (count == nullptr) return true;
    if (count->iCount.fetch_sub(1) != 1) return false;
    delete count;
    return true;
  }

 private:
  ShareCount() : iCount(1) {}

  std::atomic<int> iCount;
};

}  // namespace detail
}  // namespace znutil

#endif  // ZNUTIL_VALUES_INTERNAL_SHARECOUNT_H
