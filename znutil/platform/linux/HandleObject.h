// What a HANDLE points at on Linux: one object per open handle, closed and
// destroyed by CloseHandle whatever it stands for.
#ifndef ZNUTIL_PLATFORM_LINUX_HANDLEOBJECT_H
#define ZNUTIL_PLATFORM_LINUX_HANDLEOBJECT_H

#include <cstddef>

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

/// A file mapping: its own descriptor of the file, so that the file may be
/// closed before the view is made, and the size the view will have.
class MappingHandleObject final : public HandleObject {
 public:
  MappingHandleObject(int descriptor, std::size_t size) : file_(descriptor), size_(size) {}
  int Descriptor() const { return file_.Descriptor(); }
  std::size_t Size() const { return size_; }

 private:
  FileHandleObject file_;
  std::size_t size_;
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
