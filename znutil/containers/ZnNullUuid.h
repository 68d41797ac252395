// ZnNullUuid: the marker type of NULL_UUID, the all-zero identifier.
#ifndef ZNUTIL_CONTAINERS_ZNNULLUUID_H
#define ZNUTIL_CONTAINERS_ZNNULLUUID_H

#include <znutil/platform/Export.h>

class ZNUTIL_API ZnNullUuid {};

/// Selects the all-zero overloads of ZnUuid.
ZNUTIL_API extern ZnNullUuid const NULL_UUID;

#endif  // ZNUTIL_CONTAINERS_ZNNULLUUID_H
