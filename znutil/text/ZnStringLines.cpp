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

void ZnString::Tokenize(ZnString const &delimiters, ZnStringTokenizerCallBack &callback) const {
  if (Length() == 0) return;
  ZnStringRef text(*pzsrRef);
  ZnString delimiterSet(delimiters);
  char *token = text.GetInternal();
  for (;;) {
    // The callback may change the set: it is read afresh for every token.
    char *delimiter = std::strpbrk(token, delimiterSet.Chars());
    if (delimiter == nullptr) {
      callback.StringTokenizerCallBack(ZnString(token), delimiterSet);
      return;
    }
    char const saved = *delimiter;
    *delimiter = '\0';
    bool const goOn = callback.StringTokenizerCallBack(ZnString(token), delimiterSet);
    *delimiter = saved;
    if (!goOn) return;
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
