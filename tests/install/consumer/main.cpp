// A minimal application: start the library, keep a setting, log a line, stop.
#include <znutil/znutil.h>

int main() {
  // The profile is <program folder>/<program>.cfg; the log goes beside it.
  InitializeUtilityLibrary("My application", "", false);
  UtilityApp app;
  int const runs = app.GetProfileIntA("Start", "Runs", 0) + 1;
  app.WriteProfileInt("Start", "Runs", runs);
  ZnString line;
  line.Format("started %d times", runs);
  ZnLogger::Log(ZnLogger::kInformation, "App", "Start", line);
  ShutdownUtilityLibrary();  // writes the profile and the log
  return app.GetProfileIntA("Start", "Runs", -1) == -1 ? 0 : 1;  // no settings after the stop
}
