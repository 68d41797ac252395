// ZnStringList: a list that owns its strings, and a tokenizer callback that
// appends every token.
//
//   ZnStringList words;
//   ZnString("a b c").Tokenize(ZnString(" "), words);
//   for (ZnString *word = words.First(position); word != nullptr; word = words.Next(position)) ...
//
// Each item is a ZnString from the fixed-block allocator that shares the
// ref of the value it was made from. Delete(ZnListContext &), DeleteFirst,
// DeleteLast, Clear and the destructor destroy strings; Delete(ZnString const &)
// deliberately unlinks without destroying. Search is always exact, whatever
// its flag says: also deliberate.
#ifndef ZNUTIL_TEXT_ZNSTRINGLIST_H
#define ZNUTIL_TEXT_ZNSTRINGLIST_H

#include <znutil/containers/ZnDblList.h>
#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>
#include <znutil/text/ZnStringTokenizerCallBack.h>

class ZNUTIL_API ZnStringList : public ZnDblList, public ZnStringTokenizerCallBack {
 public:
  ZnStringList() = default;
  /// Destroys every string.
  ~ZnStringList() override;

  using ZnDblList::Add;
  using ZnDblList::Append;
  using ZnDblList::Clear;
  using ZnDblList::Delete;
  using ZnDblList::Prepend;

  /// Unlink and destroy the string; always null.
  void *DeleteFirst() override;
  void *DeleteLast() override;
  void *Delete(ZnListContext &context) override;
  /// Destroys every string and frees the nodes.
  void Clear() override;

  /// A new string sharing `text`, appended through the virtual Append.
  virtual ZnString *Add(ZnString const &text);
  /// Unlinks the first string equal to `text` but does not destroy it:
  /// deliberate, Delete(ZnListContext &) is the destroying form.
  virtual void Delete(ZnString const &text);
  /// The first string equal to `text`; exact whatever `exact` says (deliberate).
  virtual ZnListContext Search(ZnString const &text, bool exact);
  virtual ZnString *Prepend(ZnString const &text);
  virtual ZnString *Append(ZnString const &text);

  /// Adds `text` and returns this list, which it changes.
  ZnStringList &operator+(ZnString const &text);

  ZnString *First(ZnListContext &context) const { return static_cast<ZnString *>(GetFirst(context)); }
  ZnString *Next(ZnListContext &context) const { return static_cast<ZnString *>(GetNext(context)); }
  ZnString *Current(ZnListContext &context) const { return static_cast<ZnString *>(GetCurrent(context)); }
  ZnString *Prev(ZnListContext &context) const { return static_cast<ZnString *>(GetPrev(context)); }
  ZnString *Last(ZnListContext &context) const { return static_cast<ZnString *>(GetLast(context)); }

  /// Sorts with qsort, by Compare when exact, else by CaseCompare. The
  /// strings are rebuilt: earlier pointers and contexts die; equal strings
  /// may change places.
  void Sort(bool exact);

 private:
  class ZnStringListHelper;

  bool StringTokenizerCallBack(ZnString const &token, ZnString &delimiters) override;
  static int StringCompare(void const *left, void const *right);
  static int StringCaseCompare(void const *left, void const *right);
};

#endif  // ZNUTIL_TEXT_ZNSTRINGLIST_H
