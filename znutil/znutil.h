// Every public header of the znutil library.
//
//   #include <znutil/znutil.h>
#ifndef ZNUTIL_ZNUTIL_H
#define ZNUTIL_ZNUTIL_H

#include <znutil/platform/PeFormat.h>
#include <znutil/platform/WinTypes.h>

#include <znutil/concurrency/ZnAtomicWord.h>
#include <znutil/concurrency/ZnCriticalSection.h>
#include <znutil/concurrency/ZnLock.h>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/memory/ZnFixedBlockAllocator.h>
#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/memory/ZnMemBlock.h>

#include <znutil/text/ZnNullString.h>
#include <znutil/text/ZnPointerStorageString.h>
#include <znutil/text/ZnString.h>
#include <znutil/text/ZnStringCursor.h>
#include <znutil/text/ZnStringRef.h>
#include <znutil/text/ZnStringScanner.h>
#include <znutil/text/ZnStringSize.h>

#include <znutil/system/ZnExeFileMapping.h>
#include <znutil/system/ZnExeResources.h>
#include <znutil/system/ZnFileInformation.h>
#include <znutil/system/ZnVersionResource.h>

#endif  // ZNUTIL_ZNUTIL_H
