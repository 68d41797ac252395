// ZnThread: the library's worker thread, and a named bag of per-thread data.
//
//   ZnThread *worker = new ZnThread(ZnThread::kSelfDeleting);
//   worker->AssignWork(&job, 0);        // false while it is busy: no queue
//   ...
//   worker->SignalShutdown(true);       // returns once the thread has ended
//                                       // (and, here, deleted itself)
//
//   ZnThread::AllocThreadData(ZnString("Cache"), cache);   // this thread's
//   ZnThread::GetThreadData(ZnString("Cache"));           // bag only
//
// The default ThreadEntry idles on a wake event until work is assigned,
// runs it, and idles again until shutdown is asked for. Derived classes
// may replace it. The new thread may run before the constructor returns:
// a derived class whose ThreadEntry needs its own fields constructs the
// base with kStartSuspended and calls Resume when it is ready.
//
// The low byte of the state holds one of kStateConstructed, kStateIdle,
// kStateWorking, kStateEnded, plus the kStateSuspended hint; the high byte
// collects kShutdownRequested and kKeepThreadData and is never cleared,
// except by the end of a thread that does not delete itself, which leaves
// exactly kStateEnded.
#ifndef ZNUTIL_CONCURRENCY_ZNTHREAD_H
#define ZNUTIL_CONCURRENCY_ZNTHREAD_H

#include <atomic>

#include <znutil/concurrency/ZnEvent.h>
#include <znutil/concurrency/ZnPrimitiveThread.h>
#include <znutil/concurrency/ZnThreadNotify.h>
#include <znutil/concurrency/ZnThreadWork.h>
#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnThread {
 public:
  /// Creation flags.
  static constexpr int kAdoptCallingThread = 1;  ///< no new thread: the caller becomes findable by GetThread
  static constexpr int kSelfDeleting = 2;        ///< the thread deletes its ZnThread when it ends
  static constexpr int kStartSuspended = 4;      ///< the new thread waits for Resume

  /// State bits.
  static constexpr unsigned kStateConstructed = 1;
  static constexpr unsigned kStateIdle = 2;
  static constexpr unsigned kStateWorking = 4;
  static constexpr unsigned kStateSuspended = 8;
  static constexpr unsigned kStateEnded = 16;
  static constexpr unsigned kKeepThreadData = 0x100;
  static constexpr unsigned kShutdownRequested = 0x8000;

  /// Starts a thread (or adopts the calling one) as the flags say.
  explicit ZnThread(int flags);
  /// A second object for the same thread: it shares the thread and its
  /// wake event through handles of its own, so either may be destroyed
  /// first. It is not a second thread.
  ZnThread(ZnThread const &other);
  ZnThread &operator=(ZnThread const &other);
  /// Closes the thread's handle and wake event; with kSelfDeleting, unless
  /// the state has kKeepThreadData, destroys the calling thread's data.
  /// Never stops the thread: the owner must have ended it first.
  virtual ~ZnThread();

  /// The system thread id; 0 until the new thread has started.
  unsigned long GetId() const { return udwThreadId.load(); }
  /// The raw state, both bytes.
  unsigned int GetState() const { return udwState.load(); }
  /// ORs in the bits of `bits` that lie under 0xFF00.
  void ModState(int bits);
  /// Sets the observer of the thread's start and end.
  void SetNotification(ZnThreadNotify *notify) { pNotification.store(notify); }

  /// Offers work: false if the thread is working, else stores it (over any
  /// work not yet taken up) and wakes the thread. Work is never queued.
  /// The second argument is not read.
  bool AssignWork(ZnThreadWork *work, unsigned long unused);
  /// Waits for the thread's end; false if `milliseconds` ran out.
  bool WaitForThreadToExit(unsigned long milliseconds);
  /// Asks the thread to leave its loop, waking it if it is idle; with
  /// `wait`, returns once it has ended. After that a self-deleting thread's
  /// object is gone. A thread whose work never returns never ends.
  void SignalShutdown(bool wait);
  /// Posts to the thread's message queue; true on success.
  bool PostThreadMessageA(unsigned int message, unsigned int wParam, long lParam);

  /// Level 0 (lowest) to 5 (time critical); other levels change nothing.
  void SetPriority(int level);
  void Suspend();
  void Resume();
  /// Ends the thread without its end of thread work (see docs/porting.md).
  void Terminate(int exitCode);

  /// Binds the calling thread's data to `thread` (which may be null),
  /// making the data if the thread has none.
  static void InitializeThreadData(ZnThread *thread);
  /// Destroys the calling thread's data, if it has any.
  static void DestroyThreadData();
  /// DestroyThreadData, then gives up the thread-local slot: every thread
  /// reads as having no data until a thread makes the slot again.
  static void ReleaseTls();
  /// The calling thread's ZnThread; null if it has no data or no thread.
  static ZnThread *GetThread();
  /// The calling thread's value under `name`, or null.
  static void *GetThreadData(ZnString const &name);
  /// Stores a value under a new name: false if the name exists (the old
  /// value stays) or the thread has no data. The value is never freed.
  static bool AllocThreadData(ZnString const &name, void *value);
  /// Forgets the name; nothing if the thread has no data.
  static void FreeThreadData(ZnString const &name);

 protected:
  /// The worker loop; runs on the thread. Derived classes may replace it.
  virtual void ThreadEntry();

 private:
  friend class ZnNativeThread;

  static unsigned EntryRoutine(void *thread);
  static void AllocateTls();
  void SetState(unsigned lowByte);
  void MarkSuspended(bool suspended);
  void CopyFrom(ZnThread const &other);
  void Release();

  // Written by both the owner and the thread, hence atomic.
  std::atomic<ZnULong> udwThreadId;
  ZnULong udwCreationFlags;
  ZnPrimitiveThread *pPrimitive;
  std::atomic<ZnULong> udwState;
  std::atomic<ZnEvent *> pevtWake;
  std::atomic<ZnThreadWork *> pPendingWork;
  std::atomic<ZnThreadNotify *> pNotification;

  /// The thread-data slot: -1 while not allocated.
  static std::atomic<long> iTlsIndex;
};

#endif  // ZNUTIL_CONCURRENCY_ZNTHREAD_H
