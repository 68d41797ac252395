// Symbol visibility for the znutil shared library.
//
// The library is built with hidden visibility; every public class and
// function is marked ZNUTIL_API so that it is exported.
#ifndef ZNUTIL_PLATFORM_EXPORT_H
#define ZNUTIL_PLATFORM_EXPORT_H

#define ZNUTIL_API __attribute__((visibility("default")))

#endif  // ZNUTIL_PLATFORM_EXPORT_H
