// The counter plug-in: counts its runs in its own profile section, and
// leaves a draft for the host to undo.
#include "PluginInterface.h"
#include "ProfileEditAction.h"

PLUGIN_EXPORT char *PluginStart(PluginCall *call) {
  ZnLogger::Log(ZnLogger::kInformation, "Counter", "Start", ZnString("the host says: ") + ZnString(call->greeting));
  ZenoUtilFree(call->greeting);

  UtilityApp const app;
  int const runs = app.GetProfileIntA("Counter", "Runs", 0) + 1;
  app.WriteProfileInt("Counter", "Runs", runs);
  call->history->Do(new ProfileEditAction("Counter", "Draft", "unsaved count"));
  ZnString reply;
  reply.Format("counter has run %d times", runs);
  return CopyToLibraryHeap(reply);
}
