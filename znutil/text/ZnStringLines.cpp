// Tabs, lines and tokens of ZnString.
#include <znutil/text/ZnString.h>

#include <cstring>

#include <znutil/text/ZnStringList.h>
#include <znutil/text/ZnStringTokenizerCallBack.h>

void ZnString::ExpandTabs(int tabSize) {
  // A tab size of 0 is the caller's fault; it counts as 1 rather than divide by zero.
  int const tab = tabSize > 0 ? tabSize : 1;
  char const *text = Chars();
  int tabs = 0;
  for (int i = 0; i < Length(); ++i) tabs += text[i] == '\t';
  // The room is the program's own formula and may fall short; growth covers that.
  auto *expanded = new ZnStringRef(tabSize - tabs + Length());
  int column = 0;
  for (int i = 0; i < Length(); ++i) {
    if (text[i] == '\t') {
      int const spaces = tab - column % tab;
      for (int s = 0; s < spaces; ++s) expanded->Append(' ');
      column += spaces;
    } else {
      expanded->Append(text[i]);
      ++column;
    }
  }
  Dereference();
  Take(expanded);
}

namespace {

// strpbrk over text that holds no NUL before `end`; a one-character set,
// the usual case, is searched with memchr.
char const *NextDelimiter(char const *from, char const *end, char const *set) {
  if (set[0] != '\0' && set[1] == '\0')
    return static_cast<char const *>(std::memchr(from, set[0], static_cast<std::size_t>(end - from)));
  return std::strpbrk(from, set);
}

}  // namespace

void ZnString::SetToken(char const *text, int n, int &room) {
  // Same length and max length as ZnString(text) would give the token.
  int const maxLength = n + ZnStringRef::nNumPadChars;
  if (IsNull() || pzsrRef->GetCount() != 1 || maxLength > room) {
    *this = ZnString(new ZnStringRef(n));
    room = pzsrRef->iMaxLength;
  }
  pzsrRef->iLength = n;
  pzsrRef->iMaxLength = maxLength;
  std::memcpy(pzsrRef->pcBuffer, text, static_cast<std::size_t>(n));
  pzsrRef->pcBuffer[n] = '\0';
  pzsrRef->bNulFree = true;  // cut from text that holds no NUL before its end
}

void ZnString::Tokenize(ZnString const &delimiters, ZnStringTokenizerCallBack &callback) const {
  if (Length() == 0) return;
  ZnStringRef const text(*pzsrRef);
  ZnString delimiterSet(delimiters);
  char const *token = text.GetInternal();
  char const *const end = token + std::strlen(token);
  // One ref carries every token that the callback does not keep a share of,
  // so that a scan allocates once rather than once a token.
  ZnString buffer;
  int room = 0;
  auto const deliver = [&](char const *stop) {
    buffer.SetToken(token, static_cast<int>(stop - token), room);
    ZnString const value(buffer);
    return callback.StringTokenizerCallBack(value, delimiterSet);
  };
  for (;;) {
    // The callback may change the set: it is read afresh for every token.
    char const *delimiter = NextDelimiter(token, end, delimiterSet.Chars());
    if (delimiter == nullptr) {
      deliver(end);
      return;
    }
    if (!deliver(delimiter)) return;
    token = delimiter + 1;
  }
}

void ZnString::ConvertToLines(ZnStringList *list) const {
  list->Clear();
  ZnStringRef text(*pzsrRef);
  char *line = text.GetInternal();
  for (char *feed = std::strchr(line, '\n'); feed != nullptr; feed = std::strchr(line, '\n')) {
    char *end = feed;
    while (end > line && end[-1] == '\r') --end;
    *end = '\0';
    list->Add(ZnString(line));
    line = feed + 1;
  }
  list->Add(ZnString(line));
}
