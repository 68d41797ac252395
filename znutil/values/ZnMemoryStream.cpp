#include <znutil/values/ZnMemoryStream.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include <znutil/values/ZnStreamException.h>
#include <znutil/values/internal/ShareCount.h>

using znutil::detail::ShareCount;

namespace {

// Copies `size` bytes, reversing their order when asked.
void Transfer(void *destination, void const *source, unsigned int size, bool reverse) {
  if (size == 0) return;  // a block of the caller's may be null
  if (!reverse) {
    std::memcpy(destination, source, size);
    return;
  }
  auto const *from = static_cast<unsigned char const *>(source);
  std::reverse_copy(from, from + size, static_cast<unsigned char *>(destination));
}

}  // namespace

ZnMemoryStream::ZnMemoryStream()
    : pcBuffer(new char[kInitialSize]()), udwCapacity(kInitialSize), udwPosition(0), bOwnsBuffer(true), pscShares(nullptr) {}

ZnMemoryStream::ZnMemoryStream(void *block, int size)
    : pcBuffer(static_cast<char *>(block)),
      udwCapacity(size > 0 ? static_cast<ZnULong>(size) : 0),
      udwPosition(0),
      bOwnsBuffer(false),
      pscShares(nullptr) {}

ZnMemoryStream::ZnMemoryStream(ZnMemoryStream const &other)
    : ZnStream(other),
      pcBuffer(other.pcBuffer),
      udwCapacity(other.udwCapacity),
      udwPosition(other.udwPosition),
      bOwnsBuffer(other.bOwnsBuffer),
      pscShares(nullptr) {
  if (bOwnsBuffer) ShareCount::Join(other.pscShares, pscShares);
}

ZnMemoryStream &ZnMemoryStream::operator=(ZnMemoryStream const &other) {
  if (this == &other) return *this;
  ReleaseBlock();
  ZnStream::operator=(other);
  pcBuffer = other.pcBuffer;
  udwCapacity = other.udwCapacity;
  udwPosition = other.udwPosition;
  bOwnsBuffer = other.bOwnsBuffer;
  if (bOwnsBuffer) ShareCount::Join(other.pscShares, pscShares);
  return *this;
}

ZnMemoryStream::~ZnMemoryStream() { ReleaseBlock(); }

void ZnMemoryStream::ReleaseBlock() {
  if (bOwnsBuffer && ShareCount::Leave(pscShares)) delete[] pcBuffer;
  pcBuffer = nullptr;
}

ZnStreamError ZnMemoryStream::ReadBytes(unsigned int size, void *destination, bool swap) {
  if (udwCapacity - udwPosition < size) throw ZnStreamException(ZnStreamReadError);
  Transfer(destination, pcBuffer + udwPosition, size, MustSwap(swap));
  udwPosition += size;
  SetStatus(ZnStreamOk);
  return ZnStreamOk;
}

ZnStreamError ZnMemoryStream::WriteBytes(unsigned int size, void const *source, bool swap) {
  if (udwCapacity - udwPosition < size) Grow(size);
  // Growth comes first: a stream with its status set may grow and still
  // write nothing. Deliberate.
  if (Status() != ZnStreamOk) return Status();
  Transfer(pcBuffer + udwPosition, source, size, MustSwap(swap));
  udwPosition += size;
  SetStatus(ZnStreamOk);
  return ZnStreamOk;
}

void ZnMemoryStream::Grow(unsigned int size) {
  std::uint64_t const needed = std::uint64_t{udwPosition} + size;
  // A block beyond 32 bits of capacity cannot be described: refuse it as a
  // full block is refused.
  if (!bOwnsBuffer || needed > UINT32_MAX) throw ZnStreamException(ZnStreamWriteError);
  std::uint64_t capacity = std::uint64_t{udwCapacity} * 2;
  if (capacity < needed || capacity > UINT32_MAX) capacity = needed;
  char *block = new char[capacity]();
  std::memcpy(block, pcBuffer, udwPosition);
  ReleaseBlock();
  pcBuffer = block;
  udwCapacity = static_cast<ZnULong>(capacity);
}

ZnStreamError ZnMemoryStream::Flush() { return Status(); }

ZnStreamError ZnMemoryStream::Seek(int distance) {
  ZnULong const target = udwPosition + static_cast<ZnULong>(distance);
  if (target >= udwCapacity) throw ZnStreamException(ZnStreamSeekError);
  udwPosition = target;
  return Status();
}

char *ZnMemoryStream::GetBuffer(int &length) const {
  length = static_cast<int>(udwPosition);
  return pcBuffer;
}
