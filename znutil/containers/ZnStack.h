// ZnStack: a ZnDblList used as a stack, with an optional size limit.
//
//   ZnStack undo(2);
//   undo.Push(&a); undo.Push(&b);
//   undo.Push(&c);        // false: full
//   undo.Pop();           // &b
//
// The head of the list is the top of the stack.
#ifndef ZNUTIL_CONTAINERS_ZNSTACK_H
#define ZNUTIL_CONTAINERS_ZNSTACK_H

#include <znutil/containers/ZnDblList.h>

class ZNUTIL_API ZnStack : public ZnDblList {
 public:
  /// maxSize -1 (any negative value) means no limit.
  explicit ZnStack(int maxSize = -1) : iMaxSize(maxSize) {}

  /// Prepends item; false, with no change, when the stack is full.
  bool Push(void *item) {
    if (IsFull()) return false;
    Prepend(item);
    return true;
  }
  /// Takes the top item off, through the virtual DeleteFirst; null if empty.
  void *Pop() { return DeleteFirst(); }
  /// False with no limit; otherwise whether the count has reached it.
  bool IsFull() const { return iMaxSize >= 0 && GetCount() >= iMaxSize; }
  bool IsEmpty() const { return GetCount() == 0; }
  /// The limit, -1 for none.
  int GetMaxSize() const { return iMaxSize; }
  /// The number of items.
  int Size() const { return GetCount(); }

 private:
  int iMaxSize;
};

#endif  // ZNUTIL_CONTAINERS_ZNSTACK_H
