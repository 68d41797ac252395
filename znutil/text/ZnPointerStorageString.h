// ZnPointerStorageString: string storage that also keeps the last narrow
// and wide copies handed out by ZnString's pointer conversions.
#ifndef ZNUTIL_TEXT_ZNPOINTERSTORAGESTRING_H
#define ZNUTIL_TEXT_ZNPOINTERSTORAGESTRING_H

#include <znutil/platform/Export.h>
#include <znutil/text/ZnStringRef.h>

class ZNUTIL_API ZnPointerStorageString : public ZnStringRef {
 public:
  /// Empty text, no copies.
  ZnPointerStorageString();
  /// The other ref's text, no copies.
  explicit ZnPointerStorageString(ZnStringRef const &other);
  /// Frees both copies.
  ~ZnPointerStorageString() override;
  ZnPointerStorageString(ZnPointerStorageString const &) = delete;
  ZnPointerStorageString &operator=(ZnPointerStorageString const &) = delete;

  /// A new narrow copy of the text, replacing the last one.
  char *RefreshNarrow();
  /// A new 16-bit copy of the text, replacing the last one.
  unsigned short *RefreshWide();

 private:
  unsigned short *pwWideCopy;
  char *pcNarrowCopy;
};

#endif  // ZNUTIL_TEXT_ZNPOINTERSTORAGESTRING_H
