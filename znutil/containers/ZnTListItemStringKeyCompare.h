// ZnTListItemStringKeyCompare<T>: orders two items of T by their string
// keys, case-sensitively. T offers `ZnString GetKey() const`.
#ifndef ZNUTIL_CONTAINERS_ZNTLISTITEMSTRINGKEYCOMPARE_H
#define ZNUTIL_CONTAINERS_ZNTLISTITEMSTRINGKEYCOMPARE_H

#include <znutil/containers/ZnListItemCompare.h>
#include <znutil/text/ZnString.h>

template <class T>
class ZnTListItemStringKeyCompare : public ZnListItemCompare {
 public:
  int CompareItems(void *left, void *right) override {
    return static_cast<T *>(left)->GetKey().Compare(static_cast<T *>(right)->GetKey());
  }
};

#endif  // ZNUTIL_CONTAINERS_ZNTLISTITEMSTRINGKEYCOMPARE_H
