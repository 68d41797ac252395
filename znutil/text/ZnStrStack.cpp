#include <znutil/text/ZnStrStack.h>

#include <znutil/containers/ZnListItemDestroy.h>

class ZnStrStack::ZnStrStackCB : public ZnListItemDestroy {
 public:
  void DestroyItem(void *item) override { delete static_cast<ZnString *>(item); }
};

ZnStrStack::~ZnStrStack() { ZnStrStack::Clear(); }

void ZnStrStack::Push(ZnString const &text) { Append(new ZnString(text)); }

ZnString ZnStrStack::Pop() {
  auto *top = static_cast<ZnString *>(ZnDblList::DeleteLast());
  if (top == nullptr) return ZnString();
  ZnString value(*top);
  delete top;
  return value;
}

void ZnStrStack::Clear() {
  ZnStrStackCB destroyer;
  ZnDblList::Clear(destroyer);
}
