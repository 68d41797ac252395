// What a part of the library does around a fork of the process.
#ifndef ZNUTIL_PLATFORM_FORK_H
#define ZNUTIL_PLATFORM_FORK_H

namespace znutil {
namespace platform {

/// Has `prepare` run in the forking thread just before each fork, then
/// `parent` in the parent and `child` in the child (the child's only
/// thread) just after it. False if they could not be registered.
bool OnFork(void (*prepare)(), void (*parent)(), void (*child)());

}  // namespace platform
}  // namespace znutil

#endif  // ZNUTIL_PLATFORM_FORK_H
