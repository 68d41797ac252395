// ZnConfiguration: the guard through which callers reach the process's two
// configuration files while the library runs.
//
//   ZnConfiguration configuration;
//   int width = 640;
//   if (configuration.GetIntegerEntry(0, "View", "Width", &width) != 0) width = 640;
//   configuration.SetIntegerEntry(0, "View", "Width", 800);
//
// File 0 is the application's own file (the profile), file 1 the global
// file that all applications on the computer share. The machine key of
// every call is this computer's name in lower case. Reads and writes work
// on memory: the library's configuration thread carries a write to the
// disk, and an outside change of a file into memory, within 200 ms.
#ifndef ZNUTIL_CONFIGURATION_ZNCONFIGURATION_H
#define ZNUTIL_CONFIGURATION_ZNCONFIGURATION_H

#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>
#include <znutil/values/ZnBinary.h>

class ZNUTIL_API ZnConfiguration {
 public:
  /// Counts one more user of the running configuration, if any.
  ZnConfiguration();
  /// Counts one user less, if the configuration runs.
  virtual ~ZnConfiguration();
  ZnConfiguration(ZnConfiguration const &) = delete;
  ZnConfiguration &operator=(ZnConfiguration const &) = delete;

  /// Each returns the status of the same operation of ZnCfgFile, or 3
  /// (CfgNoData) when the configuration is not running or `file` is
  /// neither 0 nor 1.
  unsigned long GetTextEntry(int file, ZnString const &section, ZnString const &entry, ZnString *result);
  unsigned long SetTextEntry(int file, ZnString const &section, ZnString const &entry, ZnString const &value);
  unsigned long GetIntegerEntry(int file, ZnString const &section, ZnString const &entry, int *result);
  unsigned long SetIntegerEntry(int file, ZnString const &section, ZnString const &entry, int value);
  unsigned long GetFloatEntry(int file, ZnString const &section, ZnString const &entry, float *result);
  unsigned long SetFloatEntry(int file, ZnString const &section, ZnString const &entry, float value);
  unsigned long GetBinaryEntry(int file, ZnString const &section, ZnString const &entry, ZnBinary *result);
  unsigned long SetBinaryEntry(int file, ZnString const &section, ZnString const &entry, ZnBinary const &value);
};

#endif  // ZNUTIL_CONFIGURATION_ZNCONFIGURATION_H
