// String tables of instance handles, for ZnString::LoadStringA.
//
// Linux modules carry no string resources, so a host registers the texts
// of an instance itself:
//
//   znutil::platform::RegisterStringResource(instance, 101, "Ready");
//   ZnString text;
//   text.LoadStringA(instance, 101);
#ifndef ZNUTIL_PLATFORM_STRINGTABLE_H
#define ZNUTIL_PLATFORM_STRINGTABLE_H

#include <znutil/platform/Export.h>
#include <znutil/platform/WinTypes.h>

namespace znutil {
namespace platform {

/// Registers `text` as string `id` of `instance`; a null text removes it.
ZNUTIL_API void RegisterStringResource(HINSTANCE instance, UINT id, char const *text);

/// Copies string `id` of `instance` into `buffer`, truncated to size - 1
/// characters; returns the characters copied, 0 if there is no such string.
int LoadStringA(HINSTANCE instance, UINT id, char *buffer, int size);

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_STRINGTABLE_H
