#include <znutil/system/ZnPathFunctions.h>

#include <znutil/platform/Directory.h>
#include <znutil/platform/File.h>
#include <znutil/platform/PathText.h>
#include <znutil/system/internal/BufferText.h>

namespace platform = znutil::platform;

ZnString ZnGetFileNameFromPath(ZnString const &path) {
  ZnString name, extension;
  path.SplitPath(nullptr, nullptr, &name, &extension);
  return name + extension;
}

ZnString ZnGetDirectoryFromPath(ZnString const &path) {
  ZnString drive, directory;
  path.SplitPath(&drive, &directory, nullptr, nullptr);
  return drive + directory;
}

ZnString ZnGetBaseFileFromPath(ZnString const &path) {
  ZnString name;
  path.SplitPath(nullptr, nullptr, &name, nullptr);
  return name;
}

ZnString ZnGetExtensionFromPath(ZnString const &path) {
  ZnString extension;
  path.SplitPath(nullptr, nullptr, nullptr, &extension);
  return extension;
}

ZnString ZnGetDriveFromPath(ZnString const &path) {
  ZnString drive;
  path.SplitPath(&drive, nullptr, nullptr, nullptr);
  return drive;
}

ZnString ZnRemoveDriveFromPath(ZnString const &path) {
  ZnString directory, name, extension;
  path.SplitPath(nullptr, &directory, &name, &extension);
  return directory + name + extension;
}

bool ZnCopyFile(ZnString const &from, ZnString const &to) {
  return platform::CopyFileA(from.Chars(), to.Chars(), false);
}

bool ZnDoesFileExist(ZnString const &path) {
  HANDLE const file = platform::CreateFileA(path.Chars(), GENERIC_READ, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return false;
  platform::CloseHandle(file);
  return true;
}

ZnString ZnGetSystemDirectory() { return znutil::detail::TextWithin(platform::SystemDirectory(), MAX_PATH); }

ZnString ZnToNativePath(ZnString const &path) { return ZnString(platform::ToSystemPath(path.Chars()).c_str()); }

ZnString ZnFromNativePath(ZnString const &path) { return ZnString(platform::FromSystemPath(path.Chars()).c_str()); }
