// What a HANDLE points at on Linux: one object per open handle, closed and
// destroyed by CloseHandle whatever it stands for.
#ifndef ZNUTIL_PLATFORM_LINUX_HANDLEOBJECT_H
#define ZNUTIL_PLATFORM_LINUX_HANDLEOBJECT_H

#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

class HandleObject {
 public:
  virtual ~HandleObject() = default;
};

/// An open file descriptor.
class FileHandleObject final : public HandleObject {
 public:
  explicit FileHandleObject(int descriptor) : descriptor_(descriptor) {}
  ~FileHandleObject() override;
  int Descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

/// The object behind `handle`, or null for null and INVALID_HANDLE_VALUE.
inline HandleObject *ObjectOf(HANDLE handle) {
  return handle == nullptr || handle == INVALID_HANDLE_VALUE ? nullptr : static_cast<HandleObject *>(handle);
}

/// The descriptor behind a file handle, or -1.
inline int DescriptorOf(HANDLE handle) {
  auto *file = dynamic_cast<FileHandleObject *>(ObjectOf(handle));
  return file != nullptr ? file->Descriptor() : -1;
}

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_LINUX_HANDLEOBJECT_H
