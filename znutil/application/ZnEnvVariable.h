// ZnEnvVariable: a named value that mirrors an environment variable.
//
//   ZnEnvVariable home("HOME");   // reads the variable now
//   ZnString dir = home;          // the cached value: no second read
//   home.Set("/tmp/h");           // caches and writes it
//
// The value is a cached copy: only the constructor and SetName read the
// environment, and only Set writes it. A variable that is not set reads as
// empty; setting an empty value removes the variable. The change reaches
// this process's environment only. Derived classes keep the value
// elsewhere by replacing ReadVariable and WriteVariable.
#ifndef ZNUTIL_APPLICATION_ZNENVVARIABLE_H
#define ZNUTIL_APPLICATION_ZNENVVARIABLE_H

#include <znutil/platform/Export.h>
#include <znutil/text/ZnString.h>

class ZNUTIL_API ZnEnvVariable {
 public:
  /// Stores the name, then reads the variable.
  explicit ZnEnvVariable(ZnString const &name);
  /// Copies name and value; nothing is read or written outside.
  ZnEnvVariable(ZnEnvVariable const &other) = default;
  ZnEnvVariable &operator=(ZnEnvVariable const &other) = default;
  virtual ~ZnEnvVariable() = default;

  /// Stores the value, then writes it out.
  void Set(ZnString const &value);
  /// The stored value; does not read again.
  ZnString Get() const { return fsValue; }
  operator ZnString() const { return fsValue; }
  /// Stores the name, then reads the value under it.
  void SetName(ZnString const &name);
  ZnString GetName() const { return fsName; }

 protected:
  /// Stores the value and nothing else.
  void SetValueDirect(ZnString const &value) { fsValue = value; }
  /// Reads the value of the name into the cache.
  virtual void ReadVariable();
  /// Writes the cached value under the name.
  virtual void WriteVariable();

 private:
  ZnString fsName;
  ZnString fsValue;
};

#endif  // ZNUTIL_APPLICATION_ZNENVVARIABLE_H
