#include <znutil/text/ZnStringList.h>

#include <cstdlib>

#include <znutil/containers/ZnListItemDestroy.h>
#include <znutil/containers/ZnListItemMatches.h>

class ZnStringList::ZnStringListHelper : public ZnListItemDestroy, public ZnListItemMatches {
 public:
  explicit ZnStringListHelper(bool exact) : bExact(exact) {}
  void DestroyItem(void *item) override { delete static_cast<ZnString *>(item); }
  bool MatchItem(void *key, void *item) override {
    ZnString const &wanted = *static_cast<ZnString *>(key);
    ZnString const &stored = *static_cast<ZnString *>(item);
    return bExact ? wanted == stored : wanted.CaseCompare(stored) == 0;
  }

 private:
  bool bExact;
};

ZnStringList::~ZnStringList() { ZnStringList::Clear(); }

void *ZnStringList::DeleteFirst() {
  delete static_cast<ZnString *>(ZnDblList::DeleteFirst());
  return nullptr;
}

void *ZnStringList::DeleteLast() {
  delete static_cast<ZnString *>(ZnDblList::DeleteLast());
  return nullptr;
}

void *ZnStringList::Delete(ZnListContext &context) {
  delete static_cast<ZnString *>(ZnDblList::Delete(context));
  return nullptr;
}

void ZnStringList::Clear() {
  ZnStringListHelper destroyer(true);
  ZnDblList::Clear(destroyer);
}

ZnString *ZnStringList::Add(ZnString const &text) {
  auto *stored = new ZnString(text);
  Append(static_cast<void *>(stored));
  return stored;
}

void ZnStringList::Delete(ZnString const &text) {
  ZnListContext found = Search(text, true);
  ZnDblList::Delete(found);
}

ZnListContext ZnStringList::Search(ZnString const &text, bool) {
  ZnStringListHelper matcher(true);
  return Find(const_cast<ZnString *>(&text), matcher);
}

ZnString *ZnStringList::Prepend(ZnString const &text) {
  auto *stored = new ZnString(text);
  ZnDblList::Prepend(stored);
  return stored;
}

ZnString *ZnStringList::Append(ZnString const &text) {
  auto *stored = new ZnString(text);
  ZnDblList::Append(stored);
  return stored;
}

ZnStringList &ZnStringList::operator+(ZnString const &text) {
  Add(text);
  return *this;
}

int ZnStringList::StringCompare(void const *left, void const *right) {
  return static_cast<ZnString const *>(left)->Compare(*static_cast<ZnString const *>(right));
}

int ZnStringList::StringCaseCompare(void const *left, void const *right) {
  return static_cast<ZnString const *>(left)->CaseCompare(*static_cast<ZnString const *>(right));
}

void ZnStringList::Sort(bool exact) {
  int const count = GetCount();
  ZnString *values = new ZnString[static_cast<std::size_t>(count)];
  ZnListContext position;
  int index = 0;
  for (ZnString *text = First(position); text != nullptr; text = Next(position)) values[index++] = *text;
  // A ZnString is one pointer with no pointer into itself, so the bytewise
  // moves of qsort keep every count right.
  std::qsort(static_cast<void *>(values), static_cast<std::size_t>(count), sizeof(ZnString),
             exact ? StringCompare : StringCaseCompare);
  Clear();
  for (int i = 0; i < count; ++i) Add(values[i]);
  delete[] values;
}

bool ZnStringList::StringTokenizerCallBack(ZnString const &token, ZnString &) {
  Add(token);
  return true;
}
