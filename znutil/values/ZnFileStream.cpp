#include <znutil/values/ZnFileStream.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <string>

#include <znutil/platform/File.h>
#include <znutil/system/ZnDirectory.h>
#include <znutil/system/ZnPathFunctions.h>
#include <znutil/values/ZnStreamException.h>
#include <znutil/values/internal/FileStreamBufferPool.h>
#include <znutil/values/internal/ShareCount.h>
#include <znutil/values/internal/StringBytes.h>

using znutil::detail::FileStreamBufferPool;
using znutil::detail::ShareCount;

namespace {

constexpr ZnULong kBufferSize = FileStreamBufferPool::kBufferSize;

HANDLE OpenForStream(ZnString const &path, ZnFileMode mode) {
  // In both modes, so that a read in a missing folder makes the folder and
  // then fails to open the file. Deliberate.
  ZnString const folder = ZnGetDirectoryFromPath(path);
  if (!ZnDirectory::Exists(folder)) ZnDirectory::CreateFolder(folder, nullptr);
  std::string const name = znutil::detail::CharactersOf(path);
  bool const reading = mode == ZnFileRead;
  return znutil::platform::CreateFileA(name.c_str(), reading ? GENERIC_READ : GENERIC_WRITE,
                                       reading ? OPEN_EXISTING : CREATE_ALWAYS,
                                       FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN);
}

}  // namespace

// Construction and sharing.

ZnFileStream::ZnFileStream(ZnString const &path, ZnFileMode mode, bool buffered)
    : hFile(OpenForStream(path, mode)),
      bOwnsHandle(true),
      pcBuffer(nullptr),
      udwBufferEnd(0),
      udwBufferPosition(0),
      eMode(mode),
      pscShares(nullptr) {
  if (hFile == INVALID_HANDLE_VALUE) throw ZnStreamException(ZnStreamOpenError);
  TakeBuffer(buffered);
}

ZnFileStream::ZnFileStream(void *handle, ZnFileMode mode, bool buffered)
    : hFile(handle),
      bOwnsHandle(false),
      pcBuffer(nullptr),
      udwBufferEnd(0),
      udwBufferPosition(0),
      eMode(mode),
      pscShares(nullptr) {
  TakeBuffer(buffered);
}

ZnFileStream::ZnFileStream(ZnFileStream const &other)
    : ZnStream(other),
      hFile(other.hFile),
      bOwnsHandle(other.bOwnsHandle),
      pcBuffer(other.pcBuffer),
      udwBufferEnd(other.udwBufferEnd),
      udwBufferPosition(other.udwBufferPosition),
      eMode(other.eMode),
      pscShares(nullptr) {
  ShareCount::Join(other.pscShares, pscShares);
}

ZnFileStream &ZnFileStream::operator=(ZnFileStream const &other) {
  if (this == &other) return *this;
  ReleaseShared();
  ZnStream::operator=(other);
  hFile = other.hFile;
  bOwnsHandle = other.bOwnsHandle;
  pcBuffer = other.pcBuffer;
  udwBufferEnd = other.udwBufferEnd;
  udwBufferPosition = other.udwBufferPosition;
  eMode = other.eMode;
  ShareCount::Join(other.pscShares, pscShares);
  return *this;
}

ZnFileStream::~ZnFileStream() noexcept(false) {
  // Releases the handle and the buffer however the flush ends.
  struct Release {
    ZnFileStream &stream;
    ~Release() { stream.ReleaseShared(); }
  } const release{*this};
  if (hFile == INVALID_HANDLE_VALUE) return;
  if (std::uncaught_exceptions() == 0) {
    Flush();
    return;
  }
  // Throwing now would end the program.
  try {
    Flush();
  } catch (ZnStreamError) {
  }
}

void ZnFileStream::TakeBuffer(bool buffered) {
  if (buffered) pcBuffer = FileStreamBufferPool::Take();
  udwBufferEnd = udwBufferPosition = 0;
}

void ZnFileStream::ReleaseShared() {
  if (ShareCount::Leave(pscShares)) {
    if (bOwnsHandle && hFile != INVALID_HANDLE_VALUE) znutil::platform::CloseHandle(hFile);
    if (pcBuffer != nullptr) FileStreamBufferPool::Give(pcBuffer);
  }
  hFile = INVALID_HANDLE_VALUE;
  pcBuffer = nullptr;
}

// Transfers. The swap flag is ignored: a file stream never reverses bytes.

ZnStreamError ZnFileStream::Finish(unsigned int shortfall, ZnStreamError error) {
  if (Status() == ZnStreamOk && shortfall != 0) SetStatus(error);
  if (Status() == ZnStreamOk) return ZnStreamOk;
  throw ZnStreamException(error);
}

ZnStreamError ZnFileStream::ReadBytes(unsigned int size, void *destination, bool) {
  auto *to = static_cast<char *>(destination);
  if (pcBuffer != nullptr && Status() == ZnStreamOk && size <= udwBufferEnd - udwBufferPosition) {
    // All of it is buffered already: the common case of small items.
    std::memcpy(to, pcBuffer + udwBufferPosition, size);
    udwBufferPosition += size;
    return ZnStreamOk;
  }
  DWORD got = 0;
  if (pcBuffer == nullptr) {
    if (!znutil::platform::ReadFile(hFile, to, size, &got)) throw ZnStreamException(ZnStreamReadError);
  } else if (Status() == ZnStreamOk) {
    got = FillAndCopy(size, to);
  }
  return Finish(size - got, ZnStreamReadError);
}

unsigned int ZnFileStream::FillAndCopy(unsigned int size, char *destination) {
  unsigned int done = 0;
  while (done < size && Status() == ZnStreamOk) {
    if (udwBufferPosition == udwBufferEnd) {
      DWORD count = 0;
      if (!znutil::platform::ReadFile(hFile, pcBuffer, kBufferSize, &count))
        throw ZnStreamException(ZnStreamReadError);
      if (count == 0) {
        SetStatus(ZnStreamReadError);
        break;
      }
      udwBufferEnd = count;
      udwBufferPosition = 0;
    }
    unsigned int const part = std::min(size - done, udwBufferEnd - udwBufferPosition);
    std::memcpy(destination + done, pcBuffer + udwBufferPosition, part);
    udwBufferPosition += part;
    done += part;
  }
  return done;
}

ZnStreamError ZnFileStream::WriteBytes(unsigned int size, void const *source, bool) {
  auto const *from = static_cast<char const *>(source);
  if (pcBuffer != nullptr && Status() == ZnStreamOk && size <= kBufferSize - udwBufferEnd) {
    // It fits the room left: the common case of small items.
    std::memcpy(pcBuffer + udwBufferEnd, from, size);
    udwBufferEnd += size;
    return ZnStreamOk;
  }
  DWORD put = size;
  if (pcBuffer == nullptr) {
    if (!znutil::platform::WriteFile(hFile, from, size, &put)) throw ZnStreamException(ZnStreamWriteError);
  } else if (Status() == ZnStreamOk) {
    for (unsigned int left = size; left != 0;) {
      if (udwBufferEnd == kBufferSize) {
        DWORD written = 0;
        if (!znutil::platform::WriteFile(hFile, pcBuffer, kBufferSize, &written))
          throw ZnStreamException(ZnStreamWriteError);
        // The waiting count is reset whatever was written, so a short write
        // of a full buffer goes unnoticed. Deliberate.
        udwBufferEnd = 0;
      }
      unsigned int const part = std::min(left, kBufferSize - udwBufferEnd);
      std::memcpy(pcBuffer + udwBufferEnd, from, part);
      udwBufferEnd += part;
      from += part;
      left -= part;
    }
  }
  return Finish(size - put, ZnStreamWriteError);
}

ZnStreamError ZnFileStream::Flush() {
  ZnULong const pending = udwBufferEnd - udwBufferPosition;
  if (pcBuffer != nullptr && pending != 0) {
    if (eMode == ZnFileRead) {
      // Moves the file back over what was buffered but not delivered. A
      // failure of the move is not reported. Deliberate.
      znutil::platform::SetFilePointer(hFile, -static_cast<LONG>(pending), FILE_CURRENT);
    } else {
      DWORD written = 0;
      if (!znutil::platform::WriteFile(hFile, pcBuffer + udwBufferPosition, pending, &written) || written < pending)
        throw ZnStreamWriteError;  // a plain status, not a ZnStreamException
    }
  }
  udwBufferEnd = udwBufferPosition = 0;
  return Status();
}

ZnStreamError ZnFileStream::Seek(int distance) {
  Flush();
  // Relative only; a failed move is not reported.
  znutil::platform::SetFilePointer(hFile, distance, FILE_CURRENT);
  return Status();
}
