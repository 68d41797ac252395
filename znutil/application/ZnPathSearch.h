// ZnPathSearch: finds a file along a list of directories.
//
//   ZnPathSearch search("tool.cfg", UtilityApp::ParsePath("%HOME%\\.tool;%STARTUPDIR%"));
//   ZnString const found = search.Search();   // empty when nowhere
//   search.NewSearch("other.cfg", NULL_STRING);   // the same directories
//
// The file is tried as it stands first; then its name and extension, the
// folder part dropped, in each directory of the list in order, and the
// first hit wins. Only a file that can be opened for reading counts.
#ifndef ZNUTIL_APPLICATION_ZNPATHSEARCH_H
#define ZNUTIL_APPLICATION_ZNPATHSEARCH_H

#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>
#include <znutil/text/ZnStringTokenizerCallBack.h>

class ZNUTIL_API ZnPathSearch {
 public:
  /// `paths` holds directories separated by ";".
  ZnPathSearch(ZnString const &file, ZnString const &paths);
  virtual ~ZnPathSearch();

  /// A new file to find; the directories change only if `paths` is not
  /// empty, so a new file can be sought along the old list.
  void NewSearch(ZnString const &file, ZnString const &paths);
  /// The path of the first hit, or empty. An empty item of the list is
  /// skipped: it names no directory.
  ZnString Search();
  /// Exactly ZnDoesFileExist: true for a file that can be opened for reading.
  static bool TestAccess(ZnString const &path);

 private:
  /// Tries the file name in each directory the tokenizer hands it, and
  /// stops the scan at the first hit.
  class ZnPathSearchCB : public ZnStringTokenizerCallBack {
   public:
    explicit ZnPathSearchCB(ZnString const &fileName);
    bool StringTokenizerCallBack(ZnString const &directory, ZnString &delimiters) override;
    ZnString const &GetFoundPath() const { return fsFoundPath; }

   private:
    ZnString fsFileName;
    ZnString fsFoundPath;
  };

  ZnString fsFileName;
  ZnString fsPathList;
};

#endif  // ZNUTIL_APPLICATION_ZNPATHSEARCH_H
