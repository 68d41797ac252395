// ZnTListItemStringCompare<T>: orders a key string, on the left, against an
// item of T, on the right, case-sensitively; lets a string-key ordered list
// be searched without building an item.
#ifndef ZNUTIL_CONTAINERS_ZNTLISTITEMSTRINGCOMPARE_H
#define ZNUTIL_CONTAINERS_ZNTLISTITEMSTRINGCOMPARE_H

#include <znutil/containers/ZnListItemCompare.h>
#include <znutil/text/ZnString.h>

template <class T>
class ZnTListItemStringCompare : public ZnListItemCompare {
 public:
  /// left is a ZnString *, right a T *.
  int CompareItems(void *left, void *right) override {
    return static_cast<ZnString const *>(left)->Compare(static_cast<T *>(right)->GetKey());
  }
};

#endif  // ZNUTIL_CONTAINERS_ZNTLISTITEMSTRINGCOMPARE_H
