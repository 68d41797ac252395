#include <znutil/configuration/ZnCfgEntry.h>

#include <cctype>
#include <cstring>
#include <utility>

namespace {

// tolower, which leaves ASCII bytes other than letters alone in every
// locale; only letters and bytes above 127 need the call.
int Lower(unsigned char c) {
  bool const plain = c < 0x80 && !((c | 0x20) >= 'a' && (c | 0x20) <= 'z');
  return plain ? c : std::tolower(c);
}

// The key of an entry: its name and machine as one text. Appending stops at
// a zero byte, so a name holding one hides the machine, as in a joined
// ZnString.
struct EntryKey {
  explicit EntryKey(ZnCfgEntry const &entry)
      : pszFirst(entry.Name().Chars()),
        pszSecond(std::strlen(pszFirst) == static_cast<std::size_t>(entry.Name().Length()) ? entry.Machine().Chars()
                                                                                             : "") {}
  /// The next byte; 0 at the end.
  unsigned char Next() {
    if (*pszFirst == '\0') std::swap(pszFirst, pszSecond);
    return static_cast<unsigned char>(*pszFirst == '\0' ? '\0' : *pszFirst++);
  }

  char const *pszFirst;
  char const *pszSecond;
};

}  // namespace

ZnCfgEntry::ZnCfgEntry(ZnString const &name, ZnString const &machine, ZnCfgData *data, bool tracked)
    : ZnCfgFileParserItem(tracked), fsName(name), fsMachine(machine), pData(data) {
  if (pData != nullptr) pData->Release();
}

ZnCfgEntry::~ZnCfgEntry() { delete pData; }

void ZnCfgEntry::SetData(ZnCfgData *data) {
  if (data == pData) return;
  delete pData;
  pData = data;
  if (pData != nullptr) pData->Release();
}

int ZnCfgEntry::CompareTo(ZnCfgEntry const &other) const {
  // Names most often differ in a byte inside both, which decides at once.
  char const *l = fsName.Chars(), *r = other.fsName.Chars();
  while (*l != '\0' && *l == *r) ++l, ++r;
  if (*l != '\0' && *r != '\0') {
    int const lower = Lower(static_cast<unsigned char>(*l)) - Lower(static_cast<unsigned char>(*r));
    if (lower != 0) return lower;
  }
  // As CaseCompare of the joined texts, without joining them.
  EntryKey left(*this), right(other);
  for (;;) {
    unsigned char const l = left.Next(), r = right.Next();
    if (l == r) {
      if (l == 0) return 0;
      continue;
    }
    int const lower = Lower(l) - Lower(r);
    if (lower != 0) return lower;
  }
}
