// ZnStreamException: what file and memory streams throw, carrying the
// stream status that caused it.
//
//   try {
//     stream >> value;
//   } catch (ZnStreamException const &e) {
//     if (e.eError == ZnStreamReadError) ...
//   } catch (ZnStreamError error) {   // ZnFileStream::Flush throws this
//   }
//
// The library's one exception class. It has no base class and no virtual
// operation, so it is not a std::exception: catch it by its own name.
#ifndef ZNUTIL_VALUES_ZNSTREAMEXCEPTION_H
#define ZNUTIL_VALUES_ZNSTREAMEXCEPTION_H

#include <znutil/platform/Export.h>
#include <znutil/values/ZnStreamError.h>

class ZNUTIL_API ZnStreamException {
 public:
  ZnStreamException(ZnStreamError error) : eError(error) {}
  ~ZnStreamException() {}
  ZnStreamException &operator=(ZnStreamException const &other) = default;
  ZnStreamException(ZnStreamException const &other) = default;

  /// The status that the failing operation reports.
  ZnStreamError eError;
};

#endif  // ZNUTIL_VALUES_ZNSTREAMEXCEPTION_H
