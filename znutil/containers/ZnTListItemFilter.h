// ZnTListItemFilter<T>: a typed filter wrapped around an inner one, which
// deletes every item the inner filter takes out.
//
// An owning ZnTDblList uses it in Clear(ZnListItemFilter &), so that what a
// filter removes from such a list is destroyed, exactly once.
#ifndef ZNUTIL_CONTAINERS_ZNTLISTITEMFILTER_H
#define ZNUTIL_CONTAINERS_ZNTLISTITEMFILTER_H

#include <znutil/containers/ZnListItemFilter.h>

template <class T>
class ZnTListItemFilter : public ZnListItemFilter {
 public:
  /// Wraps inner; with none, no item is taken out.
  explicit ZnTListItemFilter(ZnListItemFilter *inner = nullptr) : pInner(inner) {}

  bool FilterItem(void *item) override { return FilterTypedItem(static_cast<T *>(item)); }
  /// Asks the inner filter; on true deletes a non-null item through its
  /// virtual destructor. Returns the inner filter's answer.
  virtual bool FilterTypedItem(T *item) {
    bool const remove = pInner != nullptr && pInner->FilterItem(item);
    if (remove) delete item;
    return remove;
  }

 private:
  ZnListItemFilter *pInner;
};

#endif  // ZNUTIL_CONTAINERS_ZNTLISTITEMFILTER_H
