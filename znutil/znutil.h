// Every public header of the znutil library.
//
//   #include <znutil/znutil.h>
#ifndef ZNUTIL_ZNUTIL_H
#define ZNUTIL_ZNUTIL_H

#include <znutil/platform/WinTypes.h>

#include <znutil/concurrency/ZnAtomicWord.h>
#include <znutil/concurrency/ZnCriticalSection.h>
#include <znutil/concurrency/ZnLock.h>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/memory/ZnFixedBlockAllocator.h>
#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/memory/ZnMemBlock.h>

#include <znutil/regex/regexpr.h>

#endif  // ZNUTIL_ZNUTIL_H
