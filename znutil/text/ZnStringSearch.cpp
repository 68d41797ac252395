// The search members of ZnString.
#include <znutil/text/ZnString.h>

#include <cstring>

#include <znutil/containers/ZnHash.h>
#include <znutil/text/internal/WindowsRuntime.h>

namespace {

// -1 for a null result, else the index of `found` in `text`.
int IndexOf(char const *found, char const *text) { return found != nullptr ? static_cast<int>(found - text) : -1; }

}  // namespace

bool ZnString::Searchable(int start) const { return !IsNull() && start >= 0 && start < Length(); }

int ZnString::HaveCharacter(int c, int start) const {
  if (!Searchable(start)) return -1;
  char const *text = pzsrRef->GetInternal();
  return IndexOf(std::strchr(text + start, c), text);
}

int ZnString::ReverseHaveCharacter(int c, int start) const {
  if (!Searchable(start)) return -1;
  char const *text = pzsrRef->GetInternal();
  return IndexOf(std::strrchr(text + start, c), text);
}

int ZnString::HaveCharactersInSet(ZnString const &set, int start) const {
  if (!Searchable(start)) return -1;
  char const *text = pzsrRef->GetInternal();
  return IndexOf(std::strpbrk(text + start, set.pzsrRef->GetInternal()), text);
}

int ZnString::ContainsSubString(ZnString const &sub, int start) const {
  if (!Searchable(start) || sub.Length() == 0) return -1;
  // strstr, by strchr on the first character and memcmp on the rest: strchr
  // stops at the first NUL just as strstr does, and memcmp stays inside the
  // buffer, which holds Length() + 1 bytes.
  char const *text = pzsrRef->GetInternal();
  char const *const end = text + Length();
  char const *wanted = sub.pzsrRef->GetInternal();
  if (pzsrRef->bNulFree && sub.pzsrRef->bNulFree) {
    // Neither text holds a NUL before its end, so candidates can be found
    // with memchr over the places where the whole of `sub` still fits.
    auto const size = static_cast<std::size_t>(sub.Length());
    for (char const *at = text + start; end - at >= static_cast<std::ptrdiff_t>(size); ++at) {
      at = static_cast<char const *>(std::memchr(at, wanted[0], static_cast<std::size_t>(end - at) - size + 1));
      if (at == nullptr) break;
      if (std::memcmp(at, wanted, size) == 0) return static_cast<int>(at - text);
    }
    return -1;
  }
  std::size_t const size = std::strlen(wanted);
  for (char const *at = std::strchr(text + start, wanted[0]); at != nullptr && at + size <= end;
       at = std::strchr(at + 1, wanted[0])) {
    if (std::memcmp(at, wanted, size) == 0) return static_cast<int>(at - text);
  }
  return -1;
}

int ZnString::CaseContainsSubString(ZnString const &sub, int start) const {
  return ToLower().ContainsSubString(sub.ToLower(), start);
}

int ZnString::ReverseContainsSubString(ZnString const &sub, int start) const {
  if (Length() < sub.Length() || IsNull() || sub.IsNull() || start < 0) return -1;
  // An empty pattern has no last character to start from, so it can never
  // be used up: no match, and no read in front of its buffer.
  int const last = sub.Length() - 1;
  if (last < 0) return -1;
  char const *text = pzsrRef->GetInternal();
  char const *pattern = sub.pzsrRef->GetInternal();
  int position = start < Length() ? start : Length() - 1;
  int matched = last;
  // A mismatch restarts the pattern one below where it happened, not below
  // where the attempt began: characters of a failed partial match are not
  // tried again. Deliberate.
  while (position >= 0) {
    if (text[position] == pattern[matched]) {
      if (matched == 0) return position;
      --matched;
    } else {
      matched = last;
    }
    --position;
  }
  return -1;
}

int ZnString::ReverseCaseContainsSubString(ZnString const &sub, int start) const {
  return ToLower().ReverseContainsSubString(sub.ToLower(), start);
}

int ZnString::CaseCompare(ZnString const &other) const {
  char const *left = pzsrRef->GetInternal(), *right = other.pzsrRef->GetInternal();
  return znutil::detail::StrICmp(left != nullptr ? left : "", right != nullptr ? right : "");
}

ZnULong ZnString::Hash() const { return ZnHash(Chars(), static_cast<ZnULong>(Length())); }
