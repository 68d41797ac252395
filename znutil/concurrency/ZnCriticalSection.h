// ZnCriticalSection: a recursive mutex for long or re-entrant regions.
//
//   section.Enter(); ...; section.Leave();
//
// There is no TryEnter. Assignment leaves both sections as they are: each
// object keeps its own system state (see docs/porting.md).
#ifndef ZNUTIL_CONCURRENCY_ZNCRITICALSECTION_H
#define ZNUTIL_CONCURRENCY_ZNCRITICALSECTION_H

#include <znutil/platform/Export.h>
#include <znutil/platform/RecursiveMutex.h>

class ZNUTIL_API ZnCriticalSection {
 public:
  ZnCriticalSection() = default;
  ZnCriticalSection(ZnCriticalSection const &) = delete;
  /// Does nothing: a system mutex cannot be copied or aliased safely.
  ZnCriticalSection &operator=(ZnCriticalSection const &) { return *this; }

  /// Enters the section; a thread may enter again while it holds it.
  void Enter() { csMutex.Lock(); }
  /// Leaves one level of entry.
  void Leave() { csMutex.Unlock(); }

 private:
  znutil::platform::RecursiveMutex csMutex;
};

#endif  // ZNUTIL_CONCURRENCY_ZNCRITICALSECTION_H
