// ZnBinary: a short byte sequence held by value, with 64 bytes of inline
// storage.
//
//   ZnBinary width(640);               // 4 bytes, least significant first
//   int w = width;                     // 640
//   ZnBinary name(ZnString("abc"));    // 3 bytes, no terminator
//   ZnString text = name.Dump(false);  // "x61,x62,x63"
//
// A value of up to 64 bytes lives inside the object; a longer one takes a
// block of exactly its size from ZnFixedBlockAllocator. Every store replaces
// the storage: there is no growth strategy. Scalars are stored least
// significant byte first; `long` and `unsigned long` are stored as 4 bytes,
// as in the 32-bit design, whatever their width on this host.
//
// The conversions read the storage without looking at the length: an int
// from an empty value gives whatever the inline bytes hold (zero in a value
// never stored to), and the ZnString conversion reads up to the first zero
// byte. Copies are deep.
#ifndef ZNUTIL_VALUES_ZNBINARY_H
#define ZNUTIL_VALUES_ZNBINARY_H

#include <atomic>

#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/text/ZnString.h>

class ZnBinaryStream;

class ZNUTIL_API ZnBinary {
 public:
  ZNUTIL_FIXED_BLOCK_OPERATORS

  /// Bytes held inside the object, with no allocation.
  static constexpr ZnULong kInlineSize = 64;

  /// Empty.
  ZnBinary();
  /// A deep copy.
  ZnBinary(ZnBinary const &other);
  /// Every byte of the stream from its first chunk, wherever its read
  /// cursor stands.
  ZnBinary(ZnBinaryStream const &stream);
  /// 4 bytes.
  ZnBinary(int value);
  ZnBinary(unsigned int value);
  ZnBinary(long value);
  ZnBinary(unsigned long value);
  ZnBinary(float value);
  /// 8 bytes.
  ZnBinary(double value);
  /// The characters, without terminator.
  ZnBinary(ZnString const &text);

  // The virtual operations, in the order of the original interface.

  virtual ~ZnBinary();
  /// A deep copy. Assigning a value to itself empties it: the length is
  /// read again after the storage was cleared. Deliberate; keep it.
  virtual ZnBinary &operator=(ZnBinary const &other);
  /// 1 when lengths and bytes agree, else 0.
  virtual int operator==(ZnBinary const &other) const;
  virtual int operator!=(ZnBinary const &other) const;
  /// Unsigned bytes over the shorter length, then the shorter is less:
  /// -1, 0 or 1.
  virtual int Compare(ZnBinary const &other) const;
  /// Copies `count` bytes: inline up to 64, else a block of exactly `count`.
  virtual void Store(unsigned char const *bytes, ZnULong count);
  virtual void Store(ZnString const &text);
  virtual void Store(double value);
  virtual void Store(float value);
  /// The low 32 bits, as the design's 32-bit long.
  virtual void Store(unsigned long value);
  virtual void Store(long value);
  virtual void Store(unsigned int value);
  virtual void Store(int value);
  /// The first 4 bytes of the storage, whatever the length.
  virtual operator int() const;
  virtual operator unsigned int() const;
  /// The first 4 bytes, sign-extended.
  virtual operator long() const;
  virtual operator unsigned long() const;
  virtual operator float() const;
  /// The first 8 bytes of the storage, whatever the length.
  virtual operator double() const;
  /// The storage read as text up to its first zero byte, not bounded by
  /// the length. Kept non-const as it always was.
  virtual operator ZnString();
  /// The storage itself; valid until the next store.
  virtual operator unsigned char *() const;
  /// "x%02x" for each byte, separated by commas; with `lineBreaks` a
  /// "\r\n" follows the comma behind every 19th byte but the last.
  virtual ZnString Dump(bool lineBreaks);

  /// The number of bytes held.
  ZnULong Size() const { return udwLength; }

 private:
  void Init();
  /// Empties the value and takes a block for `size` bytes when it is over
  /// 64; the length stays 0.
  void AllocBuffer(ZnULong size);
  /// Frees an outside block and returns to the empty inline state.
  void DeallocBuffer();
  template <typename T>
  void StoreScalar(T value);
  template <typename T>
  T Decode() const;
  /// Copies forwards on a little-endian host, in reverse otherwise.
  static void EndianCopyData(void *destination, void const *source, ZnULong count);

  static std::atomic<bool> bInitialized;
  static std::atomic<bool> bLittleEndian;

  ZnULong udwLength;
  ZnULong udwCapacity;
  unsigned char *pucData;
  unsigned char aucInline[kInlineSize];
};

#endif  // ZNUTIL_VALUES_ZNBINARY_H
