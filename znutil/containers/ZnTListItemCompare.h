// ZnTListItemCompare<T>: the order of a ZnTOrderedList<T>, typed.
//
// The generic CompareItems forwards to CompareTypedItems, which each T
// supplies: by default as a member `int CompareTo(T const &other) const`,
// or by specialising the operation itself:
//
//   template <>
//   inline int ZnTListItemCompare<ZnCfgSection>::CompareTypedItems(ZnCfgSection *left, ZnCfgSection *right) {
//     return left->GetName().CaseCompare(right->GetName());
//   }
#ifndef ZNUTIL_CONTAINERS_ZNTLISTITEMCOMPARE_H
#define ZNUTIL_CONTAINERS_ZNTLISTITEMCOMPARE_H

#include <znutil/containers/ZnListItemCompare.h>

template <class T>
class ZnTListItemCompare : public ZnListItemCompare {
 public:
  int CompareItems(void *left, void *right) override {
    return CompareTypedItems(static_cast<T *>(left), static_cast<T *>(right));
  }
  /// Below 0, 0 or above 0 as left orders before, with or after right.
  virtual int CompareTypedItems(T *left, T *right) { return left->CompareTo(*right); }
};

#endif  // ZNUTIL_CONTAINERS_ZNTLISTITEMCOMPARE_H
