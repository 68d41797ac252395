// Environment variables through the platform's environment calls.
#include <znutil/application/ZnEnvVariable.h>

#include <string>

#include <znutil/platform/Environment.h>

ZnEnvVariable::ZnEnvVariable(ZnString const &name) : fsName(name) { ZnEnvVariable::ReadVariable(); }

void ZnEnvVariable::Set(ZnString const &value) {
  fsValue = value;
  WriteVariable();
}

void ZnEnvVariable::SetName(ZnString const &name) {
  fsName = name;
  ReadVariable();
}

void ZnEnvVariable::ReadVariable() {
  std::string value;
  znutil::platform::GetEnvironmentVariableA(fsName.Chars(), &value);
  fsValue = value.c_str();
}

void ZnEnvVariable::WriteVariable() { znutil::platform::SetEnvironmentVariableA(fsName.Chars(), fsValue.Chars()); }
