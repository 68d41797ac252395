// znutil::platform::RecursiveMutex: a recursive mutex with its system state
// kept opaque, so that no system header reaches the library's public headers.
#ifndef ZNUTIL_PLATFORM_RECURSIVEMUTEX_H
#define ZNUTIL_PLATFORM_RECURSIVEMUTEX_H

#include <znutil/platform/Export.h>

namespace znutil {
namespace platform {

class ZNUTIL_API RecursiveMutex {
 public:
  RecursiveMutex();
  ~RecursiveMutex();
  RecursiveMutex(RecursiveMutex const &) = delete;
  RecursiveMutex &operator=(RecursiveMutex const &) = delete;

  void Lock();
  void Unlock();

 private:
  // Room for the system mutex; the Linux code checks that it fits.
  alignas(8) unsigned char storage_[40];
};

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_RECURSIVEMUTEX_H
