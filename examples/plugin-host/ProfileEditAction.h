// An undoable change of one profile entry: Execute writes the new text,
// Revert puts back the text the entry had before.
//
// Its code lives in the plug-in that creates it, so the host must undo
// and destroy such actions before it unloads that plug-in.
#ifndef ZNUTIL_EXAMPLES_PLUGIN_HOST_PROFILEEDITACTION_H
#define ZNUTIL_EXAMPLES_PLUGIN_HOST_PROFILEEDITACTION_H

#include <znutil/znutil.h>

class ProfileEditAction : public ZnAction {
 public:
  ProfileEditAction(ZnString const &section, ZnString const &entry, ZnString const &text)
      : fsSection(section), fsEntry(entry), fsText(text), fsLabel(ZnString("Edit ") + section + ZnString("/") + entry) {}

  bool Execute() override {
    UtilityApp const app;
    fsBefore = app.GetProfileStringA(fsSection, fsEntry, "");
    return app.WriteProfileStringA(fsSection, fsEntry, fsText);
  }

  bool Revert() override {
    ZnLogger::Log(ZnLogger::kInformation, fsSection, "Undo", fsLabel + ZnString(" undone"));
    return UtilityApp().WriteProfileStringA(fsSection, fsEntry, fsBefore);
  }

  ZnString const &Label() override { return fsLabel; }

 private:
  ZnString fsSection;
  ZnString fsEntry;
  ZnString fsText;
  ZnString fsLabel;
  ZnString fsBefore;
};

#endif  // ZNUTIL_EXAMPLES_PLUGIN_HOST_PROFILEEDITACTION_H
