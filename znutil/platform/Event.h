// znutil::platform::Event: an event with the semantics of a Windows event
// object, its system state kept opaque so that no system header reaches the
// library's headers.
//
//   Event ready(/*manualReset=*/false);
//   ready.Set();                      // on one thread
//   ready.Wait(INFINITE);             // on another: returns kSignalled
//
// A manual-reset event stays signalled until Reset and releases every
// waiter; an auto-reset event releases one waiter and is unsignalled again
// by that release. Pulse releases the threads waiting at that moment (all
// of them, or one for auto-reset) and leaves the event unsignalled.
#ifndef ZNUTIL_PLATFORM_EVENT_H
#define ZNUTIL_PLATFORM_EVENT_H

#include <cstddef>
#include <cstdint>

namespace znutil {
namespace platform {

enum class WaitResult { kSignalled, kTimeout, kFailed };

class Event {
 public:
  /// The most events one WaitForAll takes, as on Windows.
  static constexpr std::size_t kMaximumWaitObjects = 64;

  /// An unsignalled event.
  explicit Event(bool manualReset);
  ~Event();
  Event(Event const &) = delete;
  Event &operator=(Event const &) = delete;

  /// Set and Pulse wake sleepers after they have released the event's
  /// lock: the caller keeps the event alive until they return, even when a
  /// waiter released by them would destroy it.
  void Set();
  void Reset();
  void Pulse();

  /// Waits until signalled, for at most `milliseconds` (INFINITE waits for
  /// ever; 0 only tests). Consumes the signal of an auto-reset event.
  WaitResult Wait(std::uint32_t milliseconds);

  /// Waits until all `count` events are signalled at the same moment and
  /// consumes the auto-reset ones together. Fails for no events, more than
  /// kMaximumWaitObjects, a null entry or an event named twice.
  static WaitResult WaitForAll(Event *const *events, std::size_t count, std::uint32_t milliseconds);

 private:
  // Room for the system mutex, condition variable and the event's state;
  // the Linux code checks that it fits.
  alignas(8) unsigned char storage_[128];
};

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_EVENT_H
