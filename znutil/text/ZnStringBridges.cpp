// The two members of ZnString that reach into other subsystems: the bridge
// from variants, and the lookup of a named variable.
#include <znutil/text/ZnString.h>

#include <znutil/application/UtilityApp.h>
#include <znutil/application/ZnEnvVariable.h>
#include <znutil/values/ZnVariant.h>

ZnString::ZnString(ZnVariant const &value) : ZnString(value.ToString()) {}

bool ZnString::GetVariable(ZnString const &name) {
  // A variable set to the empty text counts as not set.
  ZnString value = ZnEnvVariable(name).Get();
  if (value == NULL_STRING) value = UtilityApp().GetProfileStringA("PATHS", name, NULL_STRING);
  if (value == NULL_STRING) return false;
  *this = value;
  return true;
}
