// ZnMemoryStream: a stream over a block of memory, grown when the stream
// owns it.
//
//   ZnMemoryStream out;                // owns a 2,048-byte block
//   out << 7 << ZnString("seven");
//   int length;
//   char *bytes = out.GetBuffer(length);   // 13 bytes written
//
//   ZnMemoryStream in(bytes, length);  // reads the caller's block
//   int number;
//   in >> number;
//
// An owned block doubles when a write does not fit, or grows to exactly
// what the write needs when doubling is not enough. A block of the caller's
// never grows: a write that does not fit throws and changes nothing. Reads
// stop at the capacity, not at the last byte written. Seeks are relative
// and stay strictly inside the block, compared as unsigned, so a seek
// before the start fails too.
//
// Copies share the block. An owned block is released when the last of the
// streams that share it is destroyed or grows away from it.
#ifndef ZNUTIL_VALUES_ZNMEMORYSTREAM_H
#define ZNUTIL_VALUES_ZNMEMORYSTREAM_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/values/ZnStream.h>

namespace znutil {
namespace detail {
class ShareCount;
}  // namespace detail
}  // namespace znutil

class ZNUTIL_API ZnMemoryStream : public ZnStream {
 public:
  /// The size of the block a default stream starts with.
  static constexpr ZnULong kInitialSize = 2048;

  /// An owned, zeroed block of 2,048 bytes.
  ZnMemoryStream();
  /// The caller's block of `size` bytes, not owned; a negative size gives
  /// an empty block.
  ZnMemoryStream(void *block, int size);
  /// Shares the block and copies the position and status.
  ZnMemoryStream(ZnMemoryStream const &other);
  ZnMemoryStream &operator=(ZnMemoryStream const &other);
  ~ZnMemoryStream() override;

  /// Throws ZnStreamException(ZnStreamReadError) when fewer than `size`
  /// bytes lie between the position and the capacity.
  ZnStreamError ReadBytes(unsigned int size, void *destination, bool swap) override;
  /// Grows an owned block, or throws ZnStreamException(ZnStreamWriteError)
  /// for a full block of the caller's. A stream whose status is set writes
  /// nothing and returns the status without throwing.
  ZnStreamError WriteBytes(unsigned int size, void const *source, bool swap) override;
  /// Only returns the status.
  ZnStreamError Flush() override;
  /// Throws ZnStreamException(ZnStreamSeekError) unless position + distance,
  /// as unsigned, is below the capacity.
  ZnStreamError Seek(int distance) override;

  /// The block; `length` receives the position, which is the length of
  /// what was written only while nothing has moved it back.
  char *GetBuffer(int &length) const;

 private:
  void Grow(unsigned int size);
  void ReleaseBlock();

  char *pcBuffer;
  ZnULong udwCapacity;
  ZnULong udwPosition;
  bool bOwnsBuffer;
  mutable znutil::detail::ShareCount *pscShares;
};

#endif  // ZNUTIL_VALUES_ZNMEMORYSTREAM_H
