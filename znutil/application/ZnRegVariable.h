// ZnRegVariable: a named value kept in the registry, under a root (or an
// open key) and a key path, with the interface of ZnEnvVariable.
//
//   ZnRegVariable colour(HKEY_CURRENT_USER, "Software\\Acme\\Paint", "Colour");
//   colour.Set("red");          // creates the key if it is missing
//   ZnString now = colour;      // "red"
//
// Only text values (REG_SZ) read back; a value of another type, a missing
// value and a missing key read as empty, even when an environment variable
// of that name exists. Write failures are silent.
#ifndef ZNUTIL_APPLICATION_ZNREGVARIABLE_H
#define ZNUTIL_APPLICATION_ZNREGVARIABLE_H

#include <znutil/application/ZnEnvVariable.h>
#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnRegVariable : public ZnEnvVariable {
 public:
  /// Reads the environment variable `name` (as the base does), then the
  /// registry value, which replaces it.
  ZnRegVariable(void *rootKey, ZnString const &keyPath, ZnString const &name);
  /// Copies root key, key path, name and value; nothing is read or written.
  ZnRegVariable(ZnRegVariable const &other) = default;
  ZnRegVariable &operator=(ZnRegVariable const &other) = default;

 protected:
  void ReadVariable() override;
  void WriteVariable() override;

 private:
  void *hRootKey;
  ZnString fsKeyPath;
};

#endif  // ZNUTIL_APPLICATION_ZNREGVARIABLE_H
