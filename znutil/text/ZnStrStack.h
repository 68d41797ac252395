// ZnStrStack: a last-in, first-out stack of strings it owns.
//
//   stack.Push(ZnString("a"));
//   ZnString top = stack.Pop();   // the null string once empty
//
// The top is the tail of the list, unlike ZnStack, whose top is its head.
#ifndef ZNUTIL_TEXT_ZNSTRSTACK_H
#define ZNUTIL_TEXT_ZNSTRSTACK_H

#include <znutil/containers/ZnDblList.h>
#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnStrStack : public ZnDblList {
 public:
  ZnStrStack() = default;
  /// Destroys every string.
  ~ZnStrStack() override;

  using ZnDblList::Clear;

  /// Pushes a string sharing `text`.
  void Push(ZnString const &text);
  /// The top string, removed; the null string on an empty stack.
  ZnString Pop();
  int Count() const { return GetCount(); }
  /// Destroys every string.
  void Clear() override;

 private:
  class ZnStrStackCB;
};

#endif  // ZNUTIL_TEXT_ZNSTRSTACK_H
