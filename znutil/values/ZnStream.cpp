#include <znutil/values/ZnStream.h>

#include <algorithm>

#include <znutil/containers/ZnUuid.h>
#include <znutil/values/internal/StringBytes.h>

std::atomic<bool> ZnStream::bInitialized(false);
std::atomic<bool> ZnStream::bLittleEndian(false);

namespace {

// The largest piece of a string that extraction stages at once.
constexpr int kStringPiece = 512;

// Hands each field of a ZnUuid to `move` as (size, address, swap), in the
// order of the wire form.
template <typename Uuid, typename Move>
void EachUuidField(Uuid &value, Move move) {
  move(sizeof value.udwData1, &value.udwData1, true);
  move(sizeof value.wData2, &value.wData2, true);
  move(sizeof value.wData3, &value.wData3, true);
  for (auto &byte : value.abData4) move(1u, &byte, false);
}

}  // namespace

ZnStream::ZnStream() : eStatus(ZnStreamOk) { Init(); }

void ZnStream::Init() {
  if (!bInitialized.load(std::memory_order_relaxed)) {
    bInitialized.store(true, std::memory_order_relaxed);
    bLittleEndian.store(true, std::memory_order_relaxed);
  }
}

ZnStream &ZnStream::operator<<(ZnString const &text) {
  int const length = text.Length();
  if (WriteBytes(sizeof length, &length, true) == ZnStreamOk)
    WriteBytes(static_cast<unsigned int>(length), znutil::detail::CharactersOf(text), false);
  return *this;
}

ZnStream &ZnStream::operator<<(ZnUuid const &value) {
  EachUuidField(value, [this](unsigned int size, void const *field, bool swap) { WriteBytes(size, field, swap); });
  return *this;
}

ZnStream &ZnStream::operator>>(ZnUuid &value) {
  EachUuidField(value, [this](unsigned int size, void *field, bool swap) { ReadBytes(size, field, swap); });
  return *this;
}

ZnStream &ZnStream::operator>>(bool &value) {
  unsigned char byte = 0;
  ReadBytes(1, &byte, true);
  value = byte != 0;
  return *this;
}

ZnStream &ZnStream::operator>>(ZnString &text) {
  // The empty text rather than the null string, so that a target that is
  // read into again and again keeps its buffer.
  text = "";
  int length = 0;
  if (ReadBytes(sizeof length, &length, true) != ZnStreamOk) return *this;
  // On the stack: each extraction has its own, whatever the thread.
  char stringPiece[kStringPiece + 1];
  while (length > 0) {
    int const piece = std::min(length, kStringPiece);
    ReadBytes(static_cast<unsigned int>(piece), stringPiece, false);
    if (Status() != ZnStreamOk) break;
    // Appended as zero-terminated text: a zero byte ends this piece.
    stringPiece[piece] = '\0';
    text << stringPiece;
    length -= piece;
  }
  return *this;
}
