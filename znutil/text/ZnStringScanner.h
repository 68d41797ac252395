// ZnStringScanner: decides, character by character, how far the cursor
// scans of ZnString go.
#ifndef ZNUTIL_TEXT_ZNSTRINGSCANNER_H
#define ZNUTIL_TEXT_ZNSTRINGSCANNER_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnStringScanner {
 public:
  virtual ~ZnStringScanner() {}
  /// True to step over `c` and go on; false stops the scan at `c`.
  virtual bool Accept(char c) = 0;
};

#endif  // ZNUTIL_TEXT_ZNSTRINGSCANNER_H
