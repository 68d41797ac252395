// ZnBinaryStream: an append-only byte accumulator with a read cursor, for
// bytes whose total is not known in advance.
//
//   ZnBinaryStream bytes;
//   bytes << 640 << ZnString("View");   // 4 bytes, then 4 + 4 bytes
//   ZnBinary value(bytes);              // all 12 bytes, nothing consumed
//   int width;
//   ZnString name;
//   bytes >> width >> name;             // 640, "View"
//
// Bytes gather in 256-byte chunks that are never moved or compacted until
// the stream is destroyed. Reading does not consume: Size stays what was
// written. Scalars pass through a ZnBinary, least significant byte first,
// `long` as 4 bytes.
//
// Copies share the chunks, and with them the read and write positions that
// each chunk keeps. The chunks are released when the last of the objects
// that share them is destroyed.
#ifndef ZNUTIL_VALUES_ZNBINARYSTREAM_H
#define ZNUTIL_VALUES_ZNBINARYSTREAM_H

#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/text/ZnString.h>

class ZnBinary;

namespace znutil {
namespace detail {
class ShareCount;
}  // namespace detail
}  // namespace znutil

class ZNUTIL_API ZnBinaryStream {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  /// Bytes in each chunk.
  static constexpr ZnULong kChunkSize = 256;

  /// No chunk yet. Reading before the first append gives nothing.
  ZnBinaryStream();
  /// The value's bytes; the first chunk is made even for an empty value.
  ZnBinaryStream(ZnBinary const &value);
  /// Shares the other stream's chunks and starts from its cursors.
  ZnBinaryStream(ZnBinaryStream const &other);
  ZnBinaryStream &operator=(ZnBinaryStream const &other);
  virtual ~ZnBinaryStream();

  /// Appends one byte; always true.
  bool AppendByte(unsigned char byte);
  /// Appends `count` bytes.
  void AppendBytes(unsigned char const *bytes, ZnULong count);
  /// Copies up to `count` bytes from the read cursor and returns how many.
  /// A chunk gives up to its capacity, not just what was written to it, so
  /// a read that runs past the last byte written returns the (zero) bytes
  /// behind it as read: deliberate. Read no more than Size() in all for
  /// exact results.
  ZnULong ReadBytes(unsigned char *destination, ZnULong count);
  /// All bytes written; reading does not change it.
  ZnULong Size() const;
  /// Copies all written bytes, Size() of them; leaves the cursor alone.
  void CopyBytes(unsigned char *destination) const;

  ZnBinaryStream &operator<<(int value);
  ZnBinaryStream &operator<<(unsigned int value);
  /// 4 bytes, the design's 32-bit long.
  ZnBinaryStream &operator<<(long value);
  ZnBinaryStream &operator<<(unsigned long value);
  ZnBinaryStream &operator<<(float value);
  ZnBinaryStream &operator<<(double value);
  /// The length as a 4-byte int, then the characters with no terminator.
  ZnBinaryStream &operator<<(ZnString const &text);
  /// A short read leaves zero bytes in what is decoded; nothing reports it.
  ZnBinaryStream &operator>>(int &value);
  ZnBinaryStream &operator>>(unsigned int &value);
  ZnBinaryStream &operator>>(long &value);
  ZnBinaryStream &operator>>(unsigned long &value);
  ZnBinaryStream &operator>>(float &value);
  ZnBinaryStream &operator>>(double &value);
  /// A 4-byte length and that many bytes; the text ends at the first zero
  /// byte among them. A negative length reads no bytes and gives an empty
  /// string.
  ZnBinaryStream &operator>>(ZnString &text);

 private:
  struct BinaryChunk;

  /// Makes the first chunk, which all three cursors then point at.
  void StartChain();
  /// Makes a chunk behind the write chunk and writes to it from now on.
  void AddChunk();
  template <typename T>
  ZnBinaryStream &AppendStored(T const &value);
  template <typename T>
  ZnBinaryStream &ReadStored(T &value, ZnULong size);
  void ReleaseChain();

  BinaryChunk *pbcFirst;
  BinaryChunk *pbcWrite;
  BinaryChunk *pbcRead;
  mutable znutil::detail::ShareCount *pscShares;
};

#endif  // ZNUTIL_VALUES_ZNBINARYSTREAM_H
