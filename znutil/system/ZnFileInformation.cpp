#include <znutil/system/ZnFileInformation.h>

#include <znutil/platform/File.h>

ZnFileInformation::ZnFileInformation() : bhfiInformation(), bValid(false) {}

ZnFileInformation::ZnFileInformation(ZnString const &path) : ZnFileInformation() { Open(path); }

ZnFileInformation::~ZnFileInformation() {}

bool ZnFileInformation::Open(ZnString const &path) {
  fsPath = path.ToPath();
  return Refresh();
}

bool ZnFileInformation::Refresh() {
  using namespace znutil::platform;
  bValid = false;
  if (fsPath == NULL_STRING) return false;
  HANDLE file = CreateFileA(static_cast<char const *>(fsPath), GENERIC_READ, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return false;
  BY_HANDLE_FILE_INFORMATION information;
  if (GetFileInformationByHandle(file, &information)) {
    bhfiInformation = information;
    bValid = true;
  }
  CloseHandle(file);
  return bValid;
}
