// The 32-bit millisecond tick count and the rule for the span between two
// of its readings.
//
//   ZnULong start = ZnGetTickCount();
//   ...
//   ZnULong spent = ZnSubtractTickCounts(ZnGetTickCount(), start);
#ifndef ZNUTIL_SYSTEM_ZNTICKCOUNT_H
#define ZNUTIL_SYSTEM_ZNTICKCOUNT_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

/// Milliseconds since some fixed moment; wraps to 0 after 0xFFFFFFFF.
ZNUTIL_API ZnULong ZnGetTickCount();

/// later - earlier in 32 bits; across a wrap (later below earlier) one less.
/// The missing millisecond at a wrap is deliberate and shared by every
/// tick span in the library: do not "correct" it.
ZNUTIL_API ZnULong ZnSubtractTickCounts(ZnULong later, ZnULong earlier);

#endif  // ZNUTIL_SYSTEM_ZNTICKCOUNT_H
