#include <znutil/configuration/ZnConfiguration.h>

#include <znutil/configuration/ZnCfgFile.h>
#include <znutil/configuration/internal/ZnCfgManager.h>

namespace {

// Runs one operation of the file `index` of the running manager, with its
// machine name; CfgNoData when there is no such file.
template <typename Value>
unsigned long Forward(int index, ZnString const &section, ZnString const &entry, Value value,
                      unsigned long (ZnCfgFile::*operation)(ZnString const &, ZnString const &, ZnString const &,
                                                            Value)) {
  ZnCfgManagerUse const use;
  ZnCfgFile *file = use.Manager() != nullptr ? use.Manager()->File(index) : nullptr;
  if (file == nullptr) return ZnCfgFile::CfgNoData;
  // A text of this call's own: string counts are not shared across threads.
  ZnString const machine(use.Manager()->MachineName().Chars());
  return (file->*operation)(section, entry, machine, value);
}

void CountUser(int change) {
  ZnCfgManagerUse const use;
  if (use.Manager() != nullptr) use.Manager()->AddUser(change);
}

}  // namespace

ZnConfiguration::ZnConfiguration() { CountUser(1); }

ZnConfiguration::~ZnConfiguration() { CountUser(-1); }

unsigned long ZnConfiguration::GetTextEntry(int file, ZnString const &section, ZnString const &entry,
                                            ZnString *result) {
  return Forward(file, section, entry, result, &ZnCfgFile::GetTextEntry);
}

unsigned long ZnConfiguration::SetTextEntry(int file, ZnString const &section, ZnString const &entry,
                                            ZnString const &value) {
  return Forward<ZnString const &>(file, section, entry, value, &ZnCfgFile::SetTextEntry);
}

unsigned long ZnConfiguration::GetIntegerEntry(int file, ZnString const &section, ZnString const &entry,
                                               int *result) {
  return Forward(file, section, entry, result, &ZnCfgFile::GetIntegerEntry);
}

unsigned long ZnConfiguration::SetIntegerEntry(int file, ZnString const &section, ZnString const &entry, int value) {
  return Forward(file, section, entry, value, &ZnCfgFile::SetIntegerEntry);
}

unsigned long ZnConfiguration::GetFloatEntry(int file, ZnString const &section, ZnString const &entry,
                                             float *result) {
  return Forward(file, section, entry, result, &ZnCfgFile::GetFloatEntry);
}

unsigned long ZnConfiguration::SetFloatEntry(int file, ZnString const &section, ZnString const &entry,
                                             float value) {
  return Forward(file, section, entry, value, &ZnCfgFile::SetFloatEntry);
}

unsigned long ZnConfiguration::GetBinaryEntry(int file, ZnString const &section, ZnString const &entry,
                                              ZnBinary *result) {
  return Forward(file, section, entry, result, &ZnCfgFile::GetBinaryEntry);
}

unsigned long ZnConfiguration::SetBinaryEntry(int file, ZnString const &section, ZnString const &entry,
                                              ZnBinary const &value) {
  return Forward<ZnBinary const &>(file, section, entry, value, &ZnCfgFile::SetBinaryEntry);
}
