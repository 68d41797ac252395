// Registry variables through the platform's registry calls.
#include <znutil/application/ZnRegVariable.h>

#include <vector>

#include <znutil/platform/Registry.h>

namespace {

using namespace znutil::platform;

// Full access even for reading, as the registry variables always asked:
// a key the user may not write reads as empty.
constexpr DWORD kAccess = KEY_ALL_ACCESS;

// The text of a REG_SZ value; empty for any other type or on failure.
ZnString ReadText(HKEY key, char const *name) {
  DWORD type = 0, size = 0;
  if (RegQueryValueExA(key, name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS || type != REG_SZ) {
    return ZnString();
  }
  std::vector<BYTE> text(static_cast<std::size_t>(size) + 1, 0);
  if (RegQueryValueExA(key, name, nullptr, &type, text.data(), &size) != ERROR_SUCCESS) return ZnString();
  return ZnString(reinterpret_cast<char const *>(text.data()));
}

}  // namespace

ZnRegVariable::ZnRegVariable(void *rootKey, ZnString const &keyPath, ZnString const &name)
    : ZnEnvVariable(name), hRootKey(rootKey), fsKeyPath(keyPath) {
  ZnRegVariable::ReadVariable();
}

void ZnRegVariable::ReadVariable() {
  HKEY key = nullptr;
  if (RegOpenKeyExA(hRootKey, fsKeyPath.Chars(), 0, kAccess, &key) != ERROR_SUCCESS) {
    SetValueDirect(ZnString());
    return;
  }
  SetValueDirect(ReadText(key, GetName().Chars()));
  RegCloseKey(key);
}

void ZnRegVariable::WriteVariable() {
  HKEY key = nullptr;
  if (RegCreateKeyExA(hRootKey, fsKeyPath.Chars(), 0, "", REG_OPTION_NON_VOLATILE, kAccess, nullptr, &key,
                      nullptr) != ERROR_SUCCESS) {
    return;
  }
  ZnString const value = Get();
  RegSetValueExA(key, GetName().Chars(), 0, REG_SZ, reinterpret_cast<BYTE const *>(value.Chars()),
                 static_cast<DWORD>(value.Length()) + 1);
  RegCloseKey(key);
}
