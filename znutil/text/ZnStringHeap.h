// ZnStringHeap: a pool of strings with stable addresses.
//
//   ZnString *name = heap.AllocString();
//   *name = "scratch";
//   heap.ReleaseString(name);
#ifndef ZNUTIL_TEXT_ZNSTRINGHEAP_H
#define ZNUTIL_TEXT_ZNSTRINGHEAP_H

#include <znutil/platform/Export.h>
#include <znutil/text/ZnStringList.h>

class ZNUTIL_API ZnStringHeap : public ZnStringList {
 public:
  /// A new null string, valid until released.
  ZnString *AllocString();
  /// Destroys a string of this heap; a foreign pointer is ignored.
  void ReleaseString(ZnString *text);
  /// Destroys every string.
  void ReleaseAll();
};

#endif  // ZNUTIL_TEXT_ZNSTRINGHEAP_H
