// ZnNullString: the marker type of NULL_STRING, the library's empty value.
//
//   if (name == NULL_STRING) ...   // the emptiness test
//   name = NULL_STRING;            // release the text
#ifndef ZNUTIL_TEXT_ZNNULLSTRING_H
#define ZNUTIL_TEXT_ZNNULLSTRING_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnNullString {
 public:
  ZnNullString() {}
  ~ZnNullString() {}
  ZnNullString &operator=(ZnNullString const &) { return *this; }
};

/// Selects the null-string overloads of ZnString.
ZNUTIL_API extern ZnNullString const NULL_STRING;

#endif  // ZNUTIL_TEXT_ZNNULLSTRING_H
