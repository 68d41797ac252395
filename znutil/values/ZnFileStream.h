// ZnFileStream: a stream over a file, with or without a 2,048-byte buffer.
//
//   {
//     ZnFileStream out(ZnString("data\\settings.bin"), ZnFileWrite, true);
//     out << 1 << ZnString("one");
//   }                                  // flushed and closed here
//   ZnFileStream in(ZnString("data\\settings.bin"), ZnFileRead, true);
//   int number;
//   in >> number;
//
// Opening by path makes the file's folder first when it is missing, in
// both modes, so that a read in a missing folder creates the folder and
// then fails. Writing truncates. Buffers come from a pool shared by all
// file streams and go back to it when a stream is destroyed.
//
// A failed read or write sets the status, and in a file stream the status
// is sticky: every later transfer throws until SetStatus clears it. Flush
// throws a plain ZnStreamError, not a ZnStreamException: catch both. Unlike
// a memory stream, a file stream never reverses bytes, whatever the swap
// flag says; deliberate, and without effect on a little-endian host.
//
// Copies share the handle and the buffer. The handle is closed and the
// buffer given back when the last of the streams that share them is
// destroyed; every copy flushes what it holds.
#ifndef ZNUTIL_VALUES_ZNFILESTREAM_H
#define ZNUTIL_VALUES_ZNFILESTREAM_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/text/ZnString.h>
#include <znutil/values/ZnStream.h>

namespace znutil {
namespace detail {
class ShareCount;
}  // namespace detail
}  // namespace znutil

class ZNUTIL_API ZnFileStream : public ZnStream {
 public:
  /// Opens `path` exclusively: for reading an existing file, or for
  /// writing a new or truncated one. Throws
  /// ZnStreamException(ZnStreamOpenError) when it cannot.
  ZnFileStream(ZnString const &path, ZnFileMode mode, bool buffered);
  /// Wraps a handle that stays the caller's: it is never closed here.
  ZnFileStream(void *handle, ZnFileMode mode, bool buffered);
  ZnFileStream(ZnFileStream const &other);
  /// Gives up what this stream held, unflushed, and shares the other's.
  ZnFileStream &operator=(ZnFileStream const &other);
  /// Flushes, closes an owned handle and gives the buffer back. A flush
  /// failure leaves by exception, except while another exception is
  /// already in flight, when it is dropped.
  ~ZnFileStream() noexcept(false) override;

  /// Throws ZnStreamException(ZnStreamReadError) when the file cannot give
  /// `size` bytes; the bytes that came stay in `destination`.
  ZnStreamError ReadBytes(unsigned int size, void *destination, bool swap) override;
  /// Throws ZnStreamException(ZnStreamWriteError) when a write fails.
  ZnStreamError WriteBytes(unsigned int size, void const *source, bool swap) override;
  /// Writes what waits in the buffer, or in read mode moves the file back
  /// over what was buffered but not delivered. Throws the plain value
  /// ZnStreamWriteError when not all bytes can be written.
  ZnStreamError Flush() override;
  /// Flushes, then moves relative to the current position; a failed move
  /// is not reported.
  ZnStreamError Seek(int distance) override;

 private:
  void TakeBuffer(bool buffered);
  ZnStreamError Finish(unsigned int shortfall, ZnStreamError error);
  unsigned int FillAndCopy(unsigned int size, char *destination);
  void ReleaseShared();

  HANDLE hFile;
  bool bOwnsHandle;
  char *pcBuffer;
  ZnULong udwBufferEnd;
  ZnULong udwBufferPosition;
  ZnFileMode eMode;
  mutable znutil::detail::ShareCount *pscShares;
};

#endif  // ZNUTIL_VALUES_ZNFILESTREAM_H
