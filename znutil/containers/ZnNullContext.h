// ZnNullContext: the marker type of the null position, NULL_CONTEXT.
//
//   ZnListContext position;
//   if (list.GetFirst(position) == nullptr && position == NULL_CONTEXT) { ... }
#ifndef ZNUTIL_CONTAINERS_ZNNULLCONTEXT_H
#define ZNUTIL_CONTAINERS_ZNNULLCONTEXT_H

#include <znutil/platform/Export.h>

/// An empty marker: a ZnListContext built from it, or compared with it,
/// stands for no position.
class ZNUTIL_API ZnNullContext {};

/// The null position of every container.
extern ZNUTIL_API ZnNullContext const NULL_CONTEXT;

#endif  // ZNUTIL_CONTAINERS_ZNNULLCONTEXT_H
