// The greeter plug-in: keeps a message in its own profile section that
// grows by a word on every run, and leaves a draft for the host to undo.
#include "PluginInterface.h"
#include "ProfileEditAction.h"

PLUGIN_EXPORT char *PluginStart(PluginCall *call) {
  ZnLogger::Log(ZnLogger::kInformation, "Greeter", "Start", ZnString("the host says: ") + ZnString(call->greeting));
  ZenoUtilFree(call->greeting);

  UtilityApp const app;
  ZnString const message = app.GetProfileStringA("Greeter", "Message", "hello");
  app.WriteProfileStringA("Greeter", "Message", message + ZnString(" again"));
  call->history->Do(new ProfileEditAction("Greeter", "Draft", "unsaved greeting"));
  return CopyToLibraryHeap(ZnString("greeter says ") + message);
}
