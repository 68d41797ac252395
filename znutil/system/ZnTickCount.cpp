#include <znutil/system/ZnTickCount.h>

#include <znutil/platform/Clock.h>

ZnULong ZnGetTickCount() { return znutil::platform::TickCount(); }

ZnULong ZnSubtractTickCounts(ZnULong later, ZnULong earlier) {
  ZnULong const span = later - earlier;
  return later >= earlier ? span : span - 1;
}
