// ZnStream: a sequential byte stream with typed insertion and extraction,
// in a wire form that is a file format.
//
//   ZnMemoryStream out;
//   out << 42 << 2.5 << ZnString("name");   // 4 + 8 + (4 + 4) bytes
//
// Scalars are untagged, unpadded and little-endian; a string is an int
// length and its characters without terminator; a ZnUuid is a 4-byte and
// two 2-byte little-endian fields, then 8 single bytes (16 in all). The reader must
// know what comes next. `long` has no operators: its width differs between
// the 32-bit design and this host, and a stream must not depend on it; use
// int or long long.
//
// Failures arrive as exceptions from ReadBytes and WriteBytes, never as
// return values of the operators.
#ifndef ZNUTIL_VALUES_ZNSTREAM_H
#define ZNUTIL_VALUES_ZNSTREAM_H

#include <atomic>

#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>
#include <znutil/values/ZnStreamError.h>

class ZnUuid;

class ZNUTIL_API ZnStream {
 public:
  ZnStream();
  ZnStream(ZnStream const &other) = default;
  ZnStream &operator=(ZnStream const &other) = default;
  /// May throw: a file stream flushes when it is destroyed.
  virtual ~ZnStream() noexcept(false) {}

  /// Moves `size` bytes in; byte order is reversed when `swap` is set and
  /// the host is not little-endian (never on this host).
  virtual ZnStreamError ReadBytes(unsigned int size, void *destination, bool swap) = 0;
  virtual ZnStreamError WriteBytes(unsigned int size, void const *source, bool swap) = 0;
  virtual ZnStreamError Flush() = 0;
  /// Moves relative to the current position.
  virtual ZnStreamError Seek(int distance) = 0;

  ZnStreamError Status() const { return eStatus; }
  void SetStatus(ZnStreamError status) { eStatus = status; }

  /// One byte, 0 or 1.
  ZnStream &operator<<(bool value) { return Put(value); }
  ZnStream &operator<<(char value) { return Put(value); }
  ZnStream &operator<<(unsigned char value) { return Put(value); }
  ZnStream &operator<<(short value) { return Put(value); }
  ZnStream &operator<<(unsigned short value) { return Put(value); }
  ZnStream &operator<<(int value) { return Put(value); }
  ZnStream &operator<<(unsigned int value) { return Put(value); }
  ZnStream &operator<<(long long value) { return Put(value); }
  ZnStream &operator<<(unsigned long long value) { return Put(value); }
  ZnStream &operator<<(float value) { return Put(value); }
  ZnStream &operator<<(double value) { return Put(value); }
  /// The length as int; the characters only if that write returned 0.
  ZnStream &operator<<(ZnString const &text);
  /// The three fields with the swap flag, then the 8 bytes without: 11
  /// transfers.
  ZnStream &operator<<(ZnUuid const &value);

  /// Any non-zero byte reads as true.
  ZnStream &operator>>(bool &value);
  ZnStream &operator>>(char &value) { return Get(value); }
  ZnStream &operator>>(unsigned char &value) { return Get(value); }
  ZnStream &operator>>(short &value) { return Get(value); }
  ZnStream &operator>>(unsigned short &value) { return Get(value); }
  ZnStream &operator>>(int &value) { return Get(value); }
  ZnStream &operator>>(unsigned int &value) { return Get(value); }
  ZnStream &operator>>(long long &value) { return Get(value); }
  ZnStream &operator>>(unsigned long long &value) { return Get(value); }
  ZnStream &operator>>(float &value) { return Get(value); }
  ZnStream &operator>>(double &value) { return Get(value); }
  /// Reads the length and the text in pieces of up to 512 bytes. A zero
  /// byte inside a piece drops the rest of that piece, and a negative
  /// length gives an empty string: both deliberate.
  ZnStream &operator>>(ZnString &text);
  ZnStream &operator>>(ZnUuid &value);

  /// Bytes that each type occupies in the wire form.
  static int SizeOf(bool) { return 1; }
  static int SizeOf(char) { return 1; }
  static int SizeOf(short) { return 2; }
  static int SizeOf(int) { return 4; }
  static int SizeOf(long long) { return 8; }
  static int SizeOf(float) { return 4; }
  static int SizeOf(double) { return 8; }
  /// The length plus 4.
  static int SizeOf(ZnString const &text) { return text.Length() + 4; }
  static int SizeOf(ZnUuid const &) { return 16; }

 protected:
  /// The one-time set-up that every constructor performs.
  static void Init();
  /// True when a transfer with the swap flag must reverse its bytes.
  static bool MustSwap(bool swap) { return swap && !bLittleEndian.load(std::memory_order_relaxed); }

  static std::atomic<bool> bInitialized;
  /// Assigned true at the first construction, never probed.
  static std::atomic<bool> bLittleEndian;

 private:
  template <typename T>
  ZnStream &Put(T const &value) {
    WriteBytes(sizeof value, &value, true);
    return *this;
  }
  template <typename T>
  ZnStream &Get(T &value) {
    ReadBytes(sizeof value, &value, true);
    return *this;
  }

  ZnStreamError eStatus;
};

#endif  // ZNUTIL_VALUES_ZNSTREAM_H
