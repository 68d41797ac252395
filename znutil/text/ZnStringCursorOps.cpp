// The cursor members of ZnString: columns with tab stops.
#include <znutil/text/ZnString.h>

namespace {

// Columns a character takes at `column`.
unsigned int Width(char c, unsigned int column, unsigned int tabSize) {
  return c == '\t' ? tabSize - column % tabSize : 1;
}

}  // namespace

int ZnString::CountCharacters(int limit, int tabSize) const {
  // A tab size of 0 is the caller's fault; it counts as 1 rather than divide by zero.
  unsigned int const tab = tabSize > 0 ? static_cast<unsigned int>(tabSize) : 1;
  int const end = limit < Length() ? limit : Length();
  char const *text = pzsrRef->GetInternal();
  unsigned int column = 0;
  for (int i = 0; i < end; ++i) column += Width(text[i], column, tab);
  return static_cast<int>(column);
}

unsigned int ZnString::SetCursorFromChar(ZnStringCursor *cursor) const {
  cursor->udwCursorPos =
      static_cast<unsigned int>(CountCharacters(static_cast<int>(cursor->udwCharPos), static_cast<int>(cursor->udwTabSize)));
  return cursor->udwCursorPos;
}

unsigned int ZnString::CuBindToCursor(unsigned int pos, ZnStringCursor *cursor) const {
  cursor->udwExpandedSize = static_cast<unsigned int>(CountCharacters(Length(), static_cast<int>(cursor->udwTabSize)));
  return CuSetCursorPos(pos, cursor);
}

unsigned int ZnString::CuSetTabSize(unsigned int tab, ZnStringCursor *cursor) const {
  cursor->udwTabSize = tab;
  cursor->udwExpandedSize = static_cast<unsigned int>(CountCharacters(Length(), static_cast<int>(tab)));
  if (cursor->udwCharPos > CharCount()) cursor->udwCharPos = CharCount();
  return SetCursorFromChar(cursor);
}

unsigned int ZnString::CuBeginningOfString(ZnStringCursor *cursor) const {
  cursor->udwCursorPos = cursor->udwCharPos = 0;
  return 0;
}

unsigned int ZnString::CuEndOfString(ZnStringCursor *cursor) const {
  cursor->udwCursorPos = cursor->udwExpandedSize;
  cursor->udwCharPos = CharCount();
  return cursor->udwCursorPos;
}

unsigned int ZnString::CuMoveLeft(ZnStringCursor *cursor) const {
  if (cursor->udwCursorPos == 0) return 0;
  if (cursor->udwCursorPos > cursor->udwExpandedSize) return --cursor->udwCursorPos;
  if (cursor->udwCharPos > 0) --cursor->udwCharPos;
  return SetCursorFromChar(cursor);
}

unsigned int ZnString::CuMoveRight(ZnStringCursor *cursor) const {
  if (cursor->udwCursorPos >= cursor->udwExpandedSize) return ++cursor->udwCursorPos;
  ++cursor->udwCharPos;
  return SetCursorFromChar(cursor);
}

unsigned int ZnString::CuSetCursorPos(unsigned int pos, ZnStringCursor *cursor) const {
  if (pos >= cursor->udwExpandedSize) {
    cursor->udwCursorPos = pos;
    cursor->udwCharPos = CharCount();
    return pos;
  }
  unsigned int const tab = cursor->udwTabSize > 0 ? cursor->udwTabSize : 1;
  char const *text = pzsrRef->GetInternal();
  unsigned int column = 0, index = 0;
  // Stop at the character whose columns hold `pos`; its first column wins.
  for (; index < CharCount(); ++index) {
    unsigned int const width = Width(text[index], column, tab);
    if (pos < column + width) break;
    column += width;
  }
  cursor->udwCharPos = index;
  cursor->udwCursorPos = column;
  return column;
}

unsigned int ZnString::CuSetCharPos(unsigned int pos, ZnStringCursor *cursor) const {
  cursor->udwCharPos = pos < CharCount() ? pos : CharCount();
  return SetCursorFromChar(cursor);
}

unsigned int ZnString::CuScanForward(ZnStringCursor *cursor, ZnStringScanner &scanner) const {
  if (cursor->udwCursorPos >= cursor->udwExpandedSize) return cursor->udwCursorPos;
  char const *text = pzsrRef->GetInternal();
  while (cursor->udwCharPos < CharCount() && scanner.Accept(text[cursor->udwCharPos])) ++cursor->udwCharPos;
  return SetCursorFromChar(cursor);
}

unsigned int ZnString::CuScanBackward(ZnStringCursor *cursor, ZnStringScanner &scanner) const {
  if (cursor->udwCursorPos == 0) return 0;
  char const *text = pzsrRef->GetInternal();
  while (cursor->udwCharPos > 0 && scanner.Accept(text[cursor->udwCharPos - 1])) --cursor->udwCharPos;
  return SetCursorFromChar(cursor);
}
