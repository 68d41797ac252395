// ZnIntList: a ZnDblList of int values, kept in the item pointers.
//
//   ZnIntList numbers;
//   numbers.Add(7);
//   ZnListContext position;
//   int first = numbers.First(position);   // 7
//
// The end of a walk reads as 0, so a stored 0 cannot be told from the end
// of the list (deliberate); walk by GetCount or check the context instead.
#ifndef ZNUTIL_CONTAINERS_ZNINTLIST_H
#define ZNUTIL_CONTAINERS_ZNINTLIST_H

#include <cstdint>

#include <znutil/containers/ZnDblList.h>

class ZNUTIL_API ZnIntList : public ZnDblList {
 public:
  using ZnDblList::Add;

  /// Appends value, through the virtual Append.
  void Add(int value) { Append(reinterpret_cast<void *>(static_cast<std::intptr_t>(value))); }
  /// The values at the walk's steps; 0 at the end.
  int First(ZnListContext &context) const { return ValueOf(GetFirst(context)); }
  int Next(ZnListContext &context) const { return ValueOf(GetNext(context)); }
  int Current(ZnListContext &context) const { return ValueOf(GetCurrent(context)); }
  int Prev(ZnListContext &context) const { return ValueOf(GetPrev(context)); }
  int Last(ZnListContext &context) const { return ValueOf(GetLast(context)); }

 private:
  static int ValueOf(void *item) { return static_cast<int>(reinterpret_cast<std::intptr_t>(item)); }
};

#endif  // ZNUTIL_CONTAINERS_ZNINTLIST_H
