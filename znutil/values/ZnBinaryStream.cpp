#include <znutil/values/ZnBinaryStream.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include <znutil/memory/ZnFixedBlockAllocator.h>
#include <znutil/values/ZnBinary.h>
#include <znutil/values/internal/ShareCount.h>

using znutil::detail::ShareCount;

struct ZnBinaryStream::BinaryChunk {
  BinaryChunk()
      : pucBytes(static_cast<unsigned char *>(ZnFixedBlockAllocator::Alloc(kChunkSize))),
        pucWritePosition(pucBytes),
        pucReadPosition(pucBytes),
        udwReadCount(0),
        udwCapacity(kChunkSize),
        udwWriteCount(0),
        pbcNext(nullptr) {
    // Reads may run into the unwritten end of a chunk; let them find zeros.
    std::memset(pucBytes, 0, kChunkSize);
  }
  ~BinaryChunk() { ZnFixedBlockAllocator::Free(pucBytes); }
  BinaryChunk(BinaryChunk const &) = delete;
  BinaryChunk &operator=(BinaryChunk const &) = delete;

  unsigned char *pucBytes;
  unsigned char *pucWritePosition;
  unsigned char *pucReadPosition;
  ZnULong udwReadCount;
  ZnULong udwCapacity;
  ZnULong udwWriteCount;
  BinaryChunk *pbcNext;
};

// Construction and sharing.

ZnBinaryStream::ZnBinaryStream() : pbcFirst(nullptr), pbcWrite(nullptr), pbcRead(nullptr), pscShares(nullptr) {}

ZnBinaryStream::ZnBinaryStream(ZnBinary const &value) : ZnBinaryStream() {
  StartChain();
  AppendBytes(value, value.Size());
}

ZnBinaryStream::ZnBinaryStream(ZnBinaryStream const &other)
    : pbcFirst(other.pbcFirst), pbcWrite(other.pbcWrite), pbcRead(other.pbcRead), pscShares(nullptr) {
  // Streams without chunks have nothing to share: each makes its own.
  if (pbcFirst != nullptr) ShareCount::Join(other.pscShares, pscShares);
}

ZnBinaryStream &ZnBinaryStream::operator=(ZnBinaryStream const &other) {
  if (this == &other) return *this;
  ReleaseChain();
  pbcFirst = other.pbcFirst;
  pbcWrite = other.pbcWrite;
  pbcRead = other.pbcRead;
  if (pbcFirst != nullptr) ShareCount::Join(other.pscShares, pscShares);
  return *this;
}

ZnBinaryStream::~ZnBinaryStream() { ReleaseChain(); }

void ZnBinaryStream::ReleaseChain() {
  if (ShareCount::Leave(pscShares)) {
    while (pbcFirst != nullptr) delete std::exchange(pbcFirst, pbcFirst->pbcNext);
  }
  pbcFirst = pbcWrite = pbcRead = nullptr;
}

// Appending.

void ZnBinaryStream::StartChain() {
  if (pbcFirst == nullptr) pbcFirst = pbcWrite = pbcRead = new BinaryChunk;
}

void ZnBinaryStream::AddChunk() {
  auto *chunk = new BinaryChunk;
  // Inserted rather than appended: a copy whose write chunk another copy
  // has already filled and extended must not cut that copy's chunks off.
  chunk->pbcNext = pbcWrite->pbcNext;
  pbcWrite->pbcNext = chunk;
  pbcWrite = chunk;
}

bool ZnBinaryStream::AppendByte(unsigned char byte) {
  StartChain();
  if (pbcWrite->udwWriteCount >= pbcWrite->udwCapacity) AddChunk();
  *pbcWrite->pucWritePosition++ = byte;
  ++pbcWrite->udwWriteCount;
  return true;
}

void ZnBinaryStream::AppendBytes(unsigned char const *bytes, ZnULong count) {
  StartChain();
  for (;;) {
    ZnULong const room = pbcWrite->udwCapacity - pbcWrite->udwWriteCount;
    ZnULong const part = std::min(room, count);
    if (part != 0) std::memcpy(pbcWrite->pucWritePosition, bytes, part);
    pbcWrite->pucWritePosition += part;
    pbcWrite->udwWriteCount += part;
    bytes += part;
    count -= part;
    // A run that exactly fills a chunk leaves it full, with no successor.
    if (count == 0) return;
    AddChunk();
  }
}

// Reading.

ZnULong ZnBinaryStream::ReadBytes(unsigned char *destination, ZnULong count) {
  ZnULong done = 0;
  while (pbcRead != nullptr) {
    // The room runs to the capacity, not to the write count: deliberate.
    ZnULong const part = std::min(pbcRead->udwCapacity - pbcRead->udwReadCount, count - done);
    if (part != 0) std::memcpy(destination + done, pbcRead->pucReadPosition, part);
    pbcRead->pucReadPosition += part;
    pbcRead->udwReadCount += part;
    done += part;
    if (done == count) break;
    if (pbcRead->pbcNext == nullptr) {
      pbcRead = pbcWrite;
      break;
    }
    pbcRead = pbcRead->pbcNext;
  }
  return done;
}

ZnULong ZnBinaryStream::Size() const {
  ZnULong size = 0;
  for (BinaryChunk const *chunk = pbcFirst; chunk != nullptr; chunk = chunk->pbcNext) size += chunk->udwWriteCount;
  return size;
}

void ZnBinaryStream::CopyBytes(unsigned char *destination) const {
  for (BinaryChunk const *chunk = pbcFirst; chunk != nullptr; chunk = chunk->pbcNext) {
    if (chunk->udwWriteCount != 0) std::memcpy(destination, chunk->pucBytes, chunk->udwWriteCount);
    destination += chunk->udwWriteCount;
  }
}

// Typed values, each through a temporary ZnBinary.

template <typename T>
ZnBinaryStream &ZnBinaryStream::AppendStored(T const &value) {
  ZnBinary const stored(value);
  AppendBytes(static_cast<unsigned char *>(stored), stored.Size());
  return *this;
}

template <typename T>
ZnBinaryStream &ZnBinaryStream::ReadStored(T &value, ZnULong size) {
  // The bytes land in the temporary's zeroed storage; a short read is
  // decoded all the same, as designed.
  ZnBinary stored;
  ReadBytes(static_cast<unsigned char *>(stored), size);
  value = static_cast<T>(stored);
  return *this;
}

ZnBinaryStream &ZnBinaryStream::operator<<(int value) { return AppendStored(value); }
ZnBinaryStream &ZnBinaryStream::operator<<(unsigned int value) { return AppendStored(value); }
ZnBinaryStream &ZnBinaryStream::operator<<(long value) { return AppendStored(value); }
ZnBinaryStream &ZnBinaryStream::operator<<(unsigned long value) { return AppendStored(value); }
ZnBinaryStream &ZnBinaryStream::operator<<(float value) { return AppendStored(value); }
ZnBinaryStream &ZnBinaryStream::operator<<(double value) { return AppendStored(value); }

ZnBinaryStream &ZnBinaryStream::operator<<(ZnString const &text) {
  *this << text.Length();
  return AppendStored(text);
}

ZnBinaryStream &ZnBinaryStream::operator>>(int &value) { return ReadStored(value, 4); }
ZnBinaryStream &ZnBinaryStream::operator>>(unsigned int &value) { return ReadStored(value, 4); }
ZnBinaryStream &ZnBinaryStream::operator>>(long &value) { return ReadStored(value, 4); }
ZnBinaryStream &ZnBinaryStream::operator>>(unsigned long &value) { return ReadStored(value, 4); }
ZnBinaryStream &ZnBinaryStream::operator>>(float &value) { return ReadStored(value, 4); }
ZnBinaryStream &ZnBinaryStream::operator>>(double &value) { return ReadStored(value, 8); }

ZnBinaryStream &ZnBinaryStream::operator>>(ZnString &text) {
  // The design stages the whole text in 512 bytes on the stack, which only
  // lengths below 512 fit. Reading in pieces gives the same text for those
  // lengths (everything before the first zero byte) and stays in bounds for
  // any other; the cursor moves as one read of `length` bytes would.
  int length = 0;
  *this >> length;
  ZnString result;
  bool ended = false;
  for (ZnULong wanted = length > 0 ? static_cast<ZnULong>(length) : 0; wanted > 0;) {
    char piece[513];
    ZnULong const asked = std::min<ZnULong>(wanted, 512);
    ZnULong const got = ReadBytes(reinterpret_cast<unsigned char *>(piece), asked);
    piece[got] = '\0';
    if (!ended) result << piece;
    ended = ended || std::memchr(piece, 0, got) != nullptr;
    if (got < asked) break;
    wanted -= got;
  }
  text = result;
  return *this;
}
