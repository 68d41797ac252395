#include <znutil/application/ZnPathSearch.h>

#include <znutil/system/ZnPathFunctions.h>

ZnPathSearch::ZnPathSearch(ZnString const &file, ZnString const &paths) : fsFileName(file), fsPathList(paths) {}

ZnPathSearch::~ZnPathSearch() {}

void ZnPathSearch::NewSearch(ZnString const &file, ZnString const &paths) {
  fsFileName = file;
  if (paths != NULL_STRING) fsPathList = paths;
}

ZnString ZnPathSearch::Search() {
  if (TestAccess(fsFileName)) return fsFileName;
  ZnPathSearchCB search(ZnGetFileNameFromPath(fsFileName));
  fsPathList.Tokenize(";", search);
  return search.GetFoundPath();
}

bool ZnPathSearch::TestAccess(ZnString const &path) { return ZnDoesFileExist(path); }

ZnPathSearch::ZnPathSearchCB::ZnPathSearchCB(ZnString const &fileName) : fsFileName(fileName) {}

bool ZnPathSearch::ZnPathSearchCB::StringTokenizerCallBack(ZnString const &directory, ZnString &) {
  // An empty item would join to "\name", a file at the root.
  if (directory == NULL_STRING) return true;
  ZnString const candidate = directory ^ fsFileName;
  if (!TestAccess(candidate)) return true;
  fsFoundPath = candidate;
  return false;
}
