// ZnStringTokenizerCallBack: receives the tokens of ZnString::Tokenize.
//
//   struct Printer : ZnStringTokenizerCallBack {
//     bool StringTokenizerCallBack(ZnString const &token, ZnString &delimiters) override {
//       std::cout << token << '\n';
//       return true;   // false stops the scan
//     }
//   };
//
// `delimiters` is the scan's own copy of the delimiter set: a callback may
// change it for the rest of the scan.
#ifndef ZNUTIL_TEXT_ZNSTRINGTOKENIZERCALLBACK_H
#define ZNUTIL_TEXT_ZNSTRINGTOKENIZERCALLBACK_H

#include <znutil/platform/Export.h>

class ZnString;

class ZNUTIL_API ZnStringTokenizerCallBack {
 public:
  virtual ~ZnStringTokenizerCallBack() {}
  /// Called for every token; the base does nothing and goes on.
  virtual bool StringTokenizerCallBack(ZnString const &token, ZnString &delimiters);
};

#endif  // ZNUTIL_TEXT_ZNSTRINGTOKENIZERCALLBACK_H
