// Threads with the rules of Windows threads: handles that can be duplicated
// and waited on, suspend counts, priorities, termination, and a message
// queue for each thread that the library starts.
//
//   HANDLE thread = BeginThread(&Routine, argument, /*suspended=*/true);
//   ResumeThread(thread);                       // yields 1: it now runs
//   WaitForThread(thread, INFINITE);            // kSignalled once it ended
//   CloseHandle(thread);                        // see File.h
//
// A handle keeps what it needs to be waited on after the thread has ended
// and after every other handle to it has been closed.
#ifndef ZNUTIL_PLATFORM_THREAD_H
#define ZNUTIL_PLATFORM_THREAD_H

#include <cstdint>

#include <znutil/platform/Event.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

/// What a new thread runs; its result is not kept.
using ThreadRoutine = unsigned (*)(void *argument);

/// The levels of SetThreadPriority.
constexpr int kThreadPriorityIdle = -15;
constexpr int kThreadPriorityLowest = -2;
constexpr int kThreadPriorityBelowNormal = -1;
constexpr int kThreadPriorityNormal = 0;
constexpr int kThreadPriorityAboveNormal = 1;
constexpr int kThreadPriorityHighest = 2;
constexpr int kThreadPriorityTimeCritical = 15;

/// The highest suspend count, as on Windows.
constexpr DWORD kMaximumSuspendCount = 127;

/// SuspendThread and ResumeThread yield this on failure.
constexpr DWORD kSuspendFailed = 0xFFFFFFFFu;

/// Starts `routine(argument)` on a new thread and yields a handle to it, or
/// null if no thread could be made. A thread started suspended waits, with
/// a suspend count of 1, until ResumeThread brings the count to 0. Either
/// way its id and its message queue exist when this returns.
HANDLE BeginThread(ThreadRoutine routine, void *argument, bool suspended);

/// A new handle to the calling thread (which need not be one the library
/// started), as DuplicateHandle of GetCurrentThread gives.
HANDLE OpenCurrentThread();

/// A new handle to the thread of `thread`; null for anything else.
HANDLE DuplicateHandle(HANDLE thread);

/// The calling thread's id (its Linux thread id).
DWORD GetCurrentThreadId();

/// Waits until the thread has ended: kSignalled, kTimeout, or kFailed for
/// a handle that is not a thread's.
WaitResult WaitForThread(HANDLE thread, std::uint32_t milliseconds);

/// Adds one to the suspend count and yields the previous count. A running
/// thread is stopped before this returns (unless it suspends itself, when
/// this returns once it is resumed). kSuspendFailed for an ended thread, a
/// bad handle, or a count at kMaximumSuspendCount.
DWORD SuspendThread(HANDLE thread);

/// Takes one from a suspend count above 0 and yields the previous count;
/// the thread runs on when the count reaches 0. kSuspendFailed for an ended
/// thread or a bad handle.
DWORD ResumeThread(HANDLE thread);

/// Sets the thread's nice value from one of the kThreadPriority levels,
/// relative to the nice value it started with; false for any other level,
/// an ended thread, or a raise the process may not make.
bool SetThreadPriority(HANDLE thread, int level);

/// Cancels the thread. It ends at its next cancellation point, never while
/// it holds a library lock, and a suspended thread is released to get
/// there. The exit code is not kept. False if the thread has ended.
bool TerminateThread(HANDLE thread, DWORD exitCode);

/// One message of a thread's queue.
struct ThreadMessage {
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
};

/// Appends a message to the queue of the library thread with that id;
/// false if there is no such thread (foreign threads have no queue).
bool PostThreadMessageA(DWORD threadId, UINT message, WPARAM wParam, LPARAM lParam);

/// Takes the oldest message of the calling thread's queue, waiting at most
/// `milliseconds` for one: kSignalled with `*message` set, kTimeout, or
/// kFailed if the calling thread is not one the library started.
ZNUTIL_API WaitResult GetThreadMessage(ThreadMessage *message, std::uint32_t milliseconds);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_THREAD_H
