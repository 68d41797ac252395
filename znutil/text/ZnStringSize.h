// ZnStringSize: a wanted capacity, to build an empty ZnString with room.
//
//   ZnString text(ZnStringSize(400));   // empty, room for 400 + 32 characters
#ifndef ZNUTIL_TEXT_ZNSTRINGSIZE_H
#define ZNUTIL_TEXT_ZNSTRINGSIZE_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnStringSize {
 public:
  ZnStringSize(int size) : iSize(size) {}
  /// The wanted capacity.
  int GetSize() const { return iSize; }

 private:
  int iSize;
};

#endif  // ZNUTIL_TEXT_ZNSTRINGSIZE_H
