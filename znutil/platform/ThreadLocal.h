// Thread-local storage for the library's per-thread pointers.
//
// The allocator reads its thread's heap on every call, so the slot uses the
// initial-exec model: one load from the thread pointer, no call to
// __tls_get_addr, which the library can afford because it keeps only a few
// such pointers.
#ifndef ZNUTIL_PLATFORM_THREADLOCAL_H
#define ZNUTIL_PLATFORM_THREADLOCAL_H

#define ZNUTIL_THREAD_LOCAL thread_local __attribute__((tls_model("initial-exec")))

#endif  // ZNUTIL_PLATFORM_THREADLOCAL_H
