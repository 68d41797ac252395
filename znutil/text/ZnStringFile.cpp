// Reading and writing a string's text as a whole file.
#include <znutil/text/ZnString.h>

#include <cstring>
#include <memory>

#include <znutil/platform/File.h>

namespace platform = znutil::platform;

namespace {

// Closes the handle when the scope ends.
struct FileCloser {
  HANDLE file;
  ~FileCloser() { platform::CloseHandle(file); }
};

}  // namespace

bool ZnStringRef::ReadFromFile(ZnString const &path) {
  HANDLE const file = platform::CreateFileA(static_cast<char const *>(path), GENERIC_READ, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return false;
  FileCloser const closer{file};
  std::uint64_t fullSize = 0;
  if (!platform::GetFileSize(file, &fullSize)) return false;
  DWORD const size = static_cast<DWORD>(fullSize);  // the low 32 bits alone count
  std::unique_ptr<char[]> bytes(new char[size + 1]);
  DWORD got = 0;
  if (size > 0 && (!platform::ReadFile(file, bytes.get(), size, &got) || got < size)) return false;
  AllocBuffer(static_cast<int>(size));
  std::memcpy(pcBuffer, bytes.get(), size);
  pcBuffer[size] = '\0';
  iLength = static_cast<int>(std::strlen(pcBuffer));  // a file ends at an embedded NUL
  bNulFree = true;
  return true;
}

bool ZnStringRef::WriteToFile(ZnString const &path) const {
  HANDLE const file = platform::CreateFileA(static_cast<char const *>(path), GENERIC_READ | GENERIC_WRITE, CREATE_ALWAYS);
  if (file == INVALID_HANDLE_VALUE) return false;
  FileCloser const closer{file};
  DWORD written = 0;
  DWORD const size = static_cast<DWORD>(iLength);
  return size == 0 || (platform::WriteFile(file, pcBuffer, size, &written) && written == size);
}

bool ZnString::ReadFromFile(ZnString const &path) {
  CopyOnWrite(0);
  return pzsrRef->ReadFromFile(path);
}
