// ZnTListItemDestroy<T>: a typed destroy callback wrapped around an optional
// inner one.
//
// The generic DestroyItem forwards to the typed DestroyTypedItem, which calls
// the inner callback when there is one and otherwise does nothing. So a
// ZnTListItemDestroy<T> without inner does NOT delete the item: that is
// deliberate, and it is why an owning typed list deletes no item on Clear().
// A derived class that wants items deleted overrides DestroyTypedItem; a
// type whose owning lists should delete their items on Clear specialises it:
//
//   template <> inline void ZnTListItemDestroy<ZnTask>::DestroyTypedItem(ZnTask *task) { delete task; }
#ifndef ZNUTIL_CONTAINERS_ZNTLISTITEMDESTROY_H
#define ZNUTIL_CONTAINERS_ZNTLISTITEMDESTROY_H

#include <znutil/containers/ZnListItemDestroy.h>

template <class T>
class ZnTListItemDestroy : public ZnListItemDestroy {
 public:
  /// Wraps inner, which may be null.
  explicit ZnTListItemDestroy(ZnListItemDestroy *inner = nullptr) : pInner(inner) {}

  void DestroyItem(void *item) override { DestroyTypedItem(static_cast<T *>(item)); }
  /// Calls the inner callback if there is one; nothing else.
  virtual void DestroyTypedItem(T *item) {
    if (pInner != nullptr) pInner->DestroyItem(item);
  }

 private:
  ZnListItemDestroy *pInner;
};

#endif  // ZNUTIL_CONTAINERS_ZNTLISTITEMDESTROY_H
