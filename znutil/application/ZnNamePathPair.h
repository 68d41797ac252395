// ZnNamePathPair: one named path of UtilityApp::SetPath, the value of the
// token %NAME% in UtilityApp::ParsePath.
//
//   ZnTStringKeyOrderedList<ZnNamePathPair> pairs(true);
//   pairs.Add(new ZnNamePathPair("Data", "C:\\data"));
//   ZnListContext position;
//   pairs.Find(ZnString("data"), position);   // found: keys are lower case
//
// Lists of pairs order and find them by name whatever its case, while the
// pair keeps the name as it was given: both string compare functors compare
// the names as lower case (with no copy, so that lookups on several threads
// never share a string count), and a key to find is given in lower case. An
// owning list deletes the pairs it lets go.
#ifndef ZNUTIL_APPLICATION_ZNNAMEPATHPAIR_H
#define ZNUTIL_APPLICATION_ZNNAMEPATHPAIR_H

#include <znutil/containers/ZnTListItemDestroy.h>
#include <znutil/containers/ZnTListItemStringCompare.h>
#include <znutil/containers/ZnTListItemStringKeyCompare.h>
#include <znutil/text/ZnString.h>

class ZnNamePathPair {
 public:
  ZnNamePathPair(ZnString const &name, ZnString const &path) : fsName(name), fsPath(path) {}

  /// The name as it was given.
  ZnString const &GetKey() const { return fsName; }
  ZnString const &GetPath() const { return fsPath; }
  void SetPath(ZnString const &path) { fsPath = path; }

 private:
  ZnString fsName;
  ZnString fsPath;
};

/// Both names in lower case.
template <>
inline int ZnTListItemStringKeyCompare<ZnNamePathPair>::CompareItems(void *left, void *right) {
  return static_cast<ZnNamePathPair *>(left)->GetKey().CaseCompare(static_cast<ZnNamePathPair *>(right)->GetKey());
}

/// The key string, already in lower case, against the lower-case name.
template <>
inline int ZnTListItemStringCompare<ZnNamePathPair>::CompareItems(void *left, void *right) {
  return static_cast<ZnString const *>(left)->CaseCompare(static_cast<ZnNamePathPair *>(right)->GetKey());
}

template <>
inline void ZnTListItemDestroy<ZnNamePathPair>::DestroyTypedItem(ZnNamePathPair *pair) {
  delete pair;
}

#endif  // ZNUTIL_APPLICATION_ZNNAMEPATHPAIR_H
