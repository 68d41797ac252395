// Path members of ZnString: joining, splitting, making, full paths, and
// string resources.
#include <znutil/text/ZnString.h>

#include <string>

#include <znutil/platform/PathText.h>
#include <znutil/platform/StringTable.h>
#include <znutil/text/internal/WindowsRuntime.h>

namespace detail = znutil::detail;

ZnString ZnString::operator^(ZnString const &text) const {
  ZnString result(*this);
  result.CopyOnWrite(0);
  char const *right = text.Chars();
  while (*right == '\\') ++right;
  char const *left = result.pzsrRef->GetInternal();
  int end = result.Length();
  while (end > 0 && left[end - 1] == '\\') --end;
  // Exactly one backslash between the two, even after an empty left text.
  if (end < result.Length())
    result.pzsrRef->Truncate(end + 1);
  else
    result.pzsrRef->Append('\\');
  result.pzsrRef->Append(right);
  return result;
}

void ZnString::SplitPath(ZnString *drive, ZnString *dir, ZnString *name, ZnString *extension) const {
  char driveText[detail::kMaxDrive], dirText[detail::kMaxDir], nameText[detail::kMaxName], extText[detail::kMaxExt];
  detail::SplitPath(Chars(), driveText, dirText, nameText, extText);
  if (drive != nullptr) *drive = driveText;
  if (dir != nullptr) *dir = dirText;
  if (name != nullptr) *name = nameText;
  if (extension != nullptr) *extension = extText;
}

void ZnString::MakePath(ZnString const &drive, ZnString const &dir, ZnString const &name,
                        ZnString const &extension) {
  char path[detail::kMaxPath];
  detail::MakePath(path, drive.Chars(), dir.Chars(), name.Chars(), extension.Chars());
  CopyOnWrite(260);
  pzsrRef->MakeCopy(path);
}

void ZnString::ConvertToPath() {
  std::string const full = znutil::platform::FullPathName(Chars());
  CopyOnWrite(260);
  pzsrRef->MakeCopy(full.c_str());
}

ZnString ZnString::ToPath() const { return Edited(&ZnString::ConvertToPath); }

bool ZnString::LoadStringA(void *instance, unsigned int id) {
  *this = NULL_STRING;
  char text[1024];
  if (znutil::platform::LoadStringA(instance, id, text, sizeof text) <= 0) return false;
  *this = text;
  return true;
}
