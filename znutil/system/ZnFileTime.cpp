#include <znutil/system/ZnFileTime.h>

#include <znutil/platform/Clock.h>
#include <znutil/platform/File.h>

namespace platform = znutil::platform;

namespace {

int const kShownAsLocal = 1;

}  // namespace

ZnFileTime::ZnFileTime(int kind) : FILETIME(), iTimeKind(kind) {}

ZnFileTime::ZnFileTime(ZnFileTime const &other, int kind) : FILETIME(other), iTimeKind(kind) {}

ZnFileTime::ZnFileTime(FILETIME const &file, int kind) : FILETIME(file), iTimeKind(kind) {}

ZnFileTime::ZnFileTime(SYSTEMTIME const &system, int kind) : ZnFileTime(kind) { *this = system; }

ZnFileTime &ZnFileTime::operator=(ZnFileTime const &other) {
  FILETIME::operator=(other);
  return *this;
}

ZnFileTime &ZnFileTime::operator=(FILETIME const &file) {
  FILETIME::operator=(file);
  return *this;
}

ZnFileTime &ZnFileTime::operator=(SYSTEMTIME const &system) {
  platform::SystemTimeToFileTime(system, this);
  return *this;
}

void ZnFileTime::Convert(SYSTEMTIME *system) const {
  FILETIME shown = *this;
  if (iTimeKind == kShownAsLocal && !platform::FileTimeToLocalFileTime(*this, &shown)) return;
  platform::FileTimeToSystemTime(shown, system);
}

bool ZnFileTime::SetFromFile(ZnString const &path) {
  HANDLE const file = platform::CreateFileA(path, GENERIC_READ, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return false;
  BY_HANDLE_FILE_INFORMATION information;
  bool const read = platform::GetFileInformationByHandle(file, &information);
  platform::CloseHandle(file);
  if (read) *this = information.ftLastWriteTime;
  return read;
}

bool ZnFileTime::operator==(FILETIME const &other) const { return platform::CompareFileTime(*this, other) == 0; }
bool ZnFileTime::operator!=(FILETIME const &other) const { return platform::CompareFileTime(*this, other) != 0; }
bool ZnFileTime::operator<(FILETIME const &other) const { return platform::CompareFileTime(*this, other) < 0; }
bool ZnFileTime::operator<=(FILETIME const &other) const { return platform::CompareFileTime(*this, other) <= 0; }
bool ZnFileTime::operator>(FILETIME const &other) const { return platform::CompareFileTime(*this, other) > 0; }
bool ZnFileTime::operator>=(FILETIME const &other) const { return platform::CompareFileTime(*this, other) >= 0; }
