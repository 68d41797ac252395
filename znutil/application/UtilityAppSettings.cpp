// UtilityApp: profile and global settings. A read always gives a value (the
// default on any failure, a wrong type included); a write goes to memory and
// fails only when no configuration manager runs. The manager's thread takes
// the change to the disk on its next turn.
#include <znutil/application/UtilityApp.h>

#include <znutil/configuration/ZnConfiguration.h>
#include <znutil/configuration/internal/ZnCfgManager.h>

namespace {

constexpr int kProfile = 0;
constexpr int kGlobal = 1;

template <typename T>
T ReadOr(unsigned long (ZnConfiguration::*get)(int, ZnString const &, ZnString const &, T *), int file,
         ZnString const &section, ZnString const &entry, T const &byDefault) {
  ZnConfiguration configuration;
  T value = T();
  return (configuration.*get)(file, section, entry, &value) == 0 ? value : byDefault;
}

template <typename T>
bool Write(unsigned long (ZnConfiguration::*set)(int, ZnString const &, ZnString const &, T), int file,
           ZnString const &section, ZnString const &entry, T value) {
  ZnConfiguration configuration;
  return (configuration.*set)(file, section, entry, value) == 0;
}

// A bool is stored as the integer 1 or 0 and read back as "not 0"; a text
// such as "true" therefore reads as false (atoi gives 0): deliberate.
bool ReadBool(int file, ZnString const &section, ZnString const &entry, bool byDefault) {
  return ReadOr<int>(&ZnConfiguration::GetIntegerEntry, file, section, entry, byDefault ? 1 : 0) != 0;
}

// The binary reads have no default: the result is left alone on failure.
bool ReadBinary(int file, ZnString const &section, ZnString const &entry, ZnBinary *result) {
  ZnConfiguration configuration;
  return configuration.GetBinaryEntry(file, section, entry, result) == 0;
}

}  // namespace

bool UtilityApp::GetProfileBool(ZnString const &section, ZnString const &entry, bool byDefault) const {
  return ReadBool(kProfile, section, entry, byDefault);
}

int UtilityApp::GetProfileIntA(ZnString const &section, ZnString const &entry, int byDefault) const {
  return ReadOr<int>(&ZnConfiguration::GetIntegerEntry, kProfile, section, entry, byDefault);
}

ZnString UtilityApp::GetProfileStringA(ZnString const &section, ZnString const &entry,
                                       ZnString const &byDefault) const {
  return ReadOr<ZnString>(&ZnConfiguration::GetTextEntry, kProfile, section, entry, byDefault);
}

float UtilityApp::GetProfileFloat(ZnString const &section, ZnString const &entry, float byDefault) const {
  return ReadOr<float>(&ZnConfiguration::GetFloatEntry, kProfile, section, entry, byDefault);
}

bool UtilityApp::GetProfileBinary(ZnString const &section, ZnString const &entry, ZnBinary *result) const {
  return ReadBinary(kProfile, section, entry, result);
}

bool UtilityApp::WriteProfileBool(ZnString const &section, ZnString const &entry, bool value) const {
  return Write<int>(&ZnConfiguration::SetIntegerEntry, kProfile, section, entry, value ? 1 : 0);
}

bool UtilityApp::WriteProfileInt(ZnString const &section, ZnString const &entry, int value) const {
  return Write<int>(&ZnConfiguration::SetIntegerEntry, kProfile, section, entry, value);
}

bool UtilityApp::WriteProfileStringA(ZnString const &section, ZnString const &entry, ZnString const &value) const {
  return Write<ZnString const &>(&ZnConfiguration::SetTextEntry, kProfile, section, entry, value);
}

bool UtilityApp::WriteProfileFloat(ZnString const &section, ZnString const &entry, float value) const {
  return Write<float>(&ZnConfiguration::SetFloatEntry, kProfile, section, entry, value);
}

bool UtilityApp::WriteProfileBinary(ZnString const &section, ZnString const &entry, ZnBinary const &value) const {
  return Write<ZnBinary const &>(&ZnConfiguration::SetBinaryEntry, kProfile, section, entry, value);
}

bool UtilityApp::GetGlobalBool(ZnString const &section, ZnString const &entry, bool byDefault) const {
  return ReadBool(kGlobal, section, entry, byDefault);
}

int UtilityApp::GetGlobalInt(ZnString const &section, ZnString const &entry, int byDefault) const {
  return ReadOr<int>(&ZnConfiguration::GetIntegerEntry, kGlobal, section, entry, byDefault);
}

ZnString UtilityApp::GetGlobalString(ZnString const &section, ZnString const &entry,
                                     ZnString const &byDefault) const {
  return ReadOr<ZnString>(&ZnConfiguration::GetTextEntry, kGlobal, section, entry, byDefault);
}

float UtilityApp::GetGlobalFloat(ZnString const &section, ZnString const &entry, float byDefault) const {
  return ReadOr<float>(&ZnConfiguration::GetFloatEntry, kGlobal, section, entry, byDefault);
}

bool UtilityApp::GetGlobalBinary(ZnString const &section, ZnString const &entry, ZnBinary *result) const {
  return ReadBinary(kGlobal, section, entry, result);
}

bool UtilityApp::WriteGlobalBool(ZnString const &section, ZnString const &entry, bool value) const {
  return Write<int>(&ZnConfiguration::SetIntegerEntry, kGlobal, section, entry, value ? 1 : 0);
}

bool UtilityApp::WriteGlobalInt(ZnString const &section, ZnString const &entry, int value) const {
  return Write<int>(&ZnConfiguration::SetIntegerEntry, kGlobal, section, entry, value);
}

bool UtilityApp::WriteGlobalString(ZnString const &section, ZnString const &entry, ZnString const &value) const {
  return Write<ZnString const &>(&ZnConfiguration::SetTextEntry, kGlobal, section, entry, value);
}

bool UtilityApp::WriteGlobalFloat(ZnString const &section, ZnString const &entry, float value) const {
  return Write<float>(&ZnConfiguration::SetFloatEntry, kGlobal, section, entry, value);
}

bool UtilityApp::WriteGlobalBinary(ZnString const &section, ZnString const &entry, ZnBinary const &value) const {
  return Write<ZnBinary const &>(&ZnConfiguration::SetBinaryEntry, kGlobal, section, entry, value);
}

void UtilityApp::Flush() const {
  ZnConfiguration configuration;
  FlushConfiguration();
}
