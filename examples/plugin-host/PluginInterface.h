// The contract between the plug-in host and its plug-ins. A plug-in is a
// shared object that exports kPluginStartSymbol with C linkage, of type
// PluginStartFunction. Host and plug-ins use the one libznutil.so of the
// process, so they share its heap, its logger and its settings: a block
// allocated on one side of the module border may be freed on the other.
#ifndef ZNUTIL_EXAMPLES_PLUGIN_HOST_PLUGININTERFACE_H
#define ZNUTIL_EXAMPLES_PLUGIN_HOST_PLUGININTERFACE_H

#include <cstring>

#include <znutil/znutil.h>

/// What the host hands a plug-in as it starts it.
struct PluginCall {
  /// The host's undo history; an action given to it stays the host's.
  ZnActionManager *history;
  /// A text on the library's heap that the plug-in now owns and frees.
  char *greeting;
};

/// Starts the plug-in. Returns a text on the library's heap for the host
/// to free, or null when the plug-in cannot run.
extern "C" typedef char *PluginStartFunction(PluginCall *call);

constexpr char kPluginStartSymbol[] = "PluginStart";

/// Marks a plug-in's entry point; nothing else of a plug-in is visible.
#define PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))

/// A copy of `text` on the library's heap, for the other side to free
/// with ZenoUtilFree.
inline char *CopyToLibraryHeap(ZnString const &text) {
  auto const size = static_cast<unsigned int>(text.Length() + 1);
  auto *block = static_cast<char *>(ZenoUtilAlloc(size));
  if (block != nullptr) std::memcpy(block, static_cast<char const *>(text), size);
  return block;
}

#endif  // ZNUTIL_EXAMPLES_PLUGIN_HOST_PLUGININTERFACE_H
